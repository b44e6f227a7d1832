#include "dsp/design/sliding_sums.hpp"

#include <cstddef>

namespace velmora {
namespace {

#define SIMD_KERNEL "dsp/design/sliding_sum_lanes.inc"
#include "core/simd_widths.inc"

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
  const auto sums = AtLevel(level, &sse2::TapSums, &avx2::TapSums, &avx512::TapSums);
  for (long done = sums(x, taps.data(), count, outputs, y); done < outputs; ++done) {
    y[done] = SumTapsPlain(x + done, taps);
  }
}

void SumWindows(const double* x, std::int64_t width, std::int64_t outputs, double* y, SimdLevel level) {
  const auto sums = AtLevel(level, &sse2::WindowSums, &avx2::WindowSums, &avx512::WindowSums);
  for (long done = sums(x, width, outputs, y); done < outputs; ++done) {
    y[done] = SumWindowPlain(x + done, width);
  }
}

}  // namespace velmora
