#include "dsp/design/sliding_sums.hpp"

#include <cstddef>

namespace velmora {
namespace {

namespace sliding_sse2 {
#define LANES 2
#include "dsp/design/sliding_sum_lanes.inc"
#undef LANES
}  // namespace sliding_sse2

SIMD_BEGIN_AVX2
namespace sliding_avx2 {
#define LANES 4
#include "dsp/design/sliding_sum_lanes.inc"
#undef LANES
}  // namespace sliding_avx2
SIMD_END

SIMD_BEGIN_AVX512
namespace sliding_avx512 {
#define LANES 8
#include "dsp/design/sliding_sum_lanes.inc"
#undef LANES
}  // namespace sliding_avx512
SIMD_END

struct SlidingKernels {
  long (*taps)(const double* x, const double* taps, long count, long outputs, double* y);
  long (*windows)(const double* x, long width, long outputs, double* y);
};

SlidingKernels SlidingKernelsOf(SimdLevel level) {
  switch (level) {
    case SimdLevel::Avx512:
      return {sliding_avx512::TapSums, sliding_avx512::WindowSums};
    case SimdLevel::Avx2:
      return {sliding_avx2::TapSums, sliding_avx2::WindowSums};
    case SimdLevel::Sse2:
      break;
  }
  return {sliding_sse2::TapSums, sliding_sse2::WindowSums};
}

}  // namespace

double SumTapsPlain(const double* x, std::span<const double> taps) {
  double sum = 0.0;
  const double* from = x + taps.size() - 1;
  for (const double tap : taps) {
    sum += tap * *from--;
  }
  return sum;
}

double SumWindowPlain(const double* x, std::int64_t width) {
  double sum = 0.0;
  for (std::int64_t k = 0; k < width; ++k) {
    sum += x[k];
  }
  return sum;
}

void SumTaps(const double* x, std::span<const double> taps, std::int64_t outputs, double* y,
             SimdLevel level) {
  const auto count = static_cast<long>(taps.size());
  for (long done = SlidingKernelsOf(level).taps(x, taps.data(), count, outputs, y); done < outputs; ++done) {
    y[done] = SumTapsPlain(x + done, taps);
  }
}

void SumWindows(const double* x, std::int64_t width, std::int64_t outputs, double* y, SimdLevel level) {
  for (long done = SlidingKernelsOf(level).windows(x, width, outputs, y); done < outputs; ++done) {
    y[done] = SumWindowPlain(x + done, width);
  }
}

}  // namespace velmora
