#include "impact/integrals.hpp"

#include <cmath>

namespace velmora {
namespace {

using Sums = PerChannel<double>;

// Frame by frame: the channels of a sample lie side by side and are added as vectors.
void AddFrame(const float* frame, int channels, Sums& sums) {
  double* total = sums.data();
  for (int c = 0; c <= channels; ++c) {
    total[c] += frame[c];
  }
}

struct RangeSums {
  Sums sum{};
  Sums absolute{};
  Sums path{};
};

#define SIMD_KERNEL "impact/integral_lanes.inc"
#include "core/simd_widths.inc"

struct Adders {
  decltype(&sse2::AddRange) addRange;
  decltype(&sse2::AddSquaredDeviations) addSquares;
};

Adders AddersOf(SimdLevel level) {
  return AtLevel<Adders>(level, {sse2::AddRange, sse2::AddSquaredDeviations},
                         {avx2::AddRange, avx2::AddSquaredDeviations},
                         {avx512::AddRange, avx512::AddSquaredDeviations});
}

}  // namespace

PerChannel<float> SimpsonIntegrals(Trial& trial, double timeStep) {
  const SampleMatrix& matrix = trial.matrix;
  Sums odd{};
  Sums even{};
  for (std::int32_t i = 2; i < trial.NData; ++i) {
    AddFrame(matrix.Frame(i), trial.NChan, i % 2 == 0 ? even : odd);
  }
  PerChannel<float> integrals{};
  for (int c = 1; c <= trial.NChan; ++c) {
    const double ends = static_cast<double>(trial.Data(1, c)) + trial.Data(trial.NData, c);
    integrals[c] = static_cast<float>((ends + odd[c] * 4 + even[c] * 2) * (timeStep / 3));
  }
  return integrals;
}

PerChannel<float> TrapezoidIntegrals(Trial& trial, double timeStep) {
  Sums inner{};
  for (std::int32_t i = 2; i < trial.NData; ++i) {
    AddFrame(trial.matrix.Frame(i), trial.NChan, inner);
  }
  PerChannel<float> integrals{};
  for (int c = 1; c <= trial.NChan; ++c) {
    const double ends = static_cast<double>(trial.Data(1, c)) + trial.Data(trial.NData, c);
    integrals[c] = static_cast<float>(timeStep * (ends / 2 + inner[c]));
  }
  return integrals;
}

double IntegralStatistics::Variation() const {
  return mean == 0.0 ? 0.0 : deviation / std::fabs(mean);
}

std::vector<IntegralStatistics> IntegrateChannels(Trial& trial, const ChannelList& channels,
                                                  SampleRange range, double timeStep, SimdLevel level) {
  const Adders adders = AddersOf(level);
  const float* first = trial.matrix.Frame(range.lo);
  const long stride = static_cast<long>(trial.matrix.Stride());
  const long frames = static_cast<long>(range.hi) - range.lo + 1;
  RangeSums sums;
  adders.addRange(first, stride, frames, sums.sum.data(), sums.absolute.data(), sums.path.data());
  const double count = static_cast<double>(frames);
  Sums mean{};
  for (int c = 0; c <= trial.NChan; ++c) {
    mean[c] = sums.sum[c] / count;
  }
  Sums squares{};
  adders.addSquares(first, stride, frames, mean.data(), squares.data());
  std::vector<IntegralStatistics> all;
  for (const int c : channels) {
    all.push_back({.mean = mean[c],
                   .deviation = std::sqrt(squares[c] / count),
                   .path = sums.path[c],
                   .sum = sums.sum[c],
                   .absoluteSum = sums.absolute[c],
                   .timeIntegral = sums.sum[c] * timeStep,
                   .absoluteIntegral = sums.absolute[c] * timeStep});
  }
  return all;
}

}  // namespace velmora
