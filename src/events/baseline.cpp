#include "events/baseline.hpp"

#include <algorithm>
#include <cmath>

#include "core/simd.hpp"

namespace velmora {
namespace {

constexpr long kWide = 16;             // channels of a group: a cache line of samples
constexpr long kSmall = 8;             // where there are fewer
constexpr long kBaselineFrames = 256;  // stay in the second-level cache while the groups go over them

#define SIMD_KERNEL "events/baseline_kernel.inc"
#include "core/simd_widths.inc"

using AddFrames = void (*)(const float* frame, long stride, long count, double* sums, double* squares);

template <long kGroup>
AddFrames AdderOf(SimdLevel level) {
  return AtLevel<AddFrames>(level, sse2::AddGroup<kGroup>, avx2::AddGroup<kGroup>, avx512::AddGroup<kGroup>);
}

struct Sums {
  PerChannel<double> sum{};
  PerChannel<double> squares{};
};

void AddPlain(const Trial& trial, SampleRange region, int channel, Sums& sums) {
  for (std::int32_t i = region.lo; i <= region.hi; ++i) {
    const double x = trial.matrix.Frame(i)[channel];
    sums.sum[channel] += x;
    sums.squares[channel] += x * x;
  }
}

// Groups side by side from channel 1 on. The last one reaches back over channels that the one before it has;
// it adds them up again, apart, rather than leave single lanes.
void AddGroups(const Trial& trial, SampleRange region, long width, AddFrames add, Sums& sums) {
  const auto stride = static_cast<long>(trial.matrix.Stride());
  const long whole = (stride - 1) / width * width;
  const bool rest = whole != stride - 1;
  double restSum[kWide] = {};
  double restSquares[kWide] = {};
  for (std::int64_t i = region.lo; i <= region.hi; i += kBaselineFrames) {
    const long count = std::min<std::int64_t>(kBaselineFrames, region.hi - i + 1);
    const float* frame = trial.matrix.Frame(i);
    for (long c = 1; c + width <= stride; c += width) {
      add(frame + c, stride, count, sums.sum.data() + c, sums.squares.data() + c);
    }
    if (rest) {
      add(frame + (stride - width), stride, count, restSum, restSquares);
    }
  }
  const long left = stride - 1 - whole;
  if (rest) {
    std::copy_n(restSum + (width - left), left, sums.sum.data() + 1 + whole);
    std::copy_n(restSquares + (width - left), left, sums.squares.data() + 1 + whole);
  }
}

Baseline BaselineOf(const Sums& sums, int channels, SampleRange region) {
  const double n = static_cast<double>(region.hi) - region.lo + 1;
  Baseline baseline;
  for (int c = 1; c <= channels; ++c) {
    const double s = sums.sum[c];
    const double variance = (sums.squares[c] - s * s / n) / (n - 1);
    baseline.mean[c] = s / n;
    baseline.deviation[c] = variance < 0 ? 0.0 : std::sqrt(variance);
  }
  return baseline;
}

}  // namespace

Baseline TakeBaselinePlain(const Trial& trial, SampleRange region) {
  Sums sums;
  for (int c = 1; c <= trial.NChan; ++c) {
    AddPlain(trial, region, c, sums);
  }
  return BaselineOf(sums, trial.NChan, region);
}

Baseline TakeBaseline(const Trial& trial, SampleRange region, SimdLevel level) {
  const auto stride = static_cast<long>(trial.matrix.Stride());
  if (stride < kSmall) {
    return TakeBaselinePlain(trial, region);
  }
  Sums sums;
  const bool wide = stride > kWide;
  AddGroups(trial, region, wide ? kWide : kSmall, wide ? AdderOf<kWide>(level) : AdderOf<kSmall>(level),
            sums);
  return BaselineOf(sums, trial.NChan, region);
}

}  // namespace velmora
