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

RangeSums AddRange(const SampleMatrix& matrix, SampleRange range) {
  const int channels = matrix.Channels();
  RangeSums sums;
  double* sum = sums.sum.data();
  double* absolute = sums.absolute.data();
  double* path = sums.path.data();
  const float* before = matrix.Frame(range.lo);
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const float* frame = matrix.Frame(i);
    for (int c = 0; c <= channels; ++c) {
      const double x = frame[c];
      sum[c] += x;
      absolute[c] += std::fabs(x);
      path[c] += std::fabs(x - before[c]);  // 0 for the first
    }
    before = frame;
  }
  return sums;
}

Sums AddSquaredDeviations(const SampleMatrix& matrix, SampleRange range, const Sums& mean) {
  const int channels = matrix.Channels();
  Sums squares{};
  double* total = squares.data();
  const double* centre = mean.data();
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const float* frame = matrix.Frame(i);
    for (int c = 0; c <= channels; ++c) {
      const double deviation = frame[c] - centre[c];
      total[c] += deviation * deviation;
    }
  }
  return squares;
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
                                                  SampleRange range, double timeStep) {
  const RangeSums sums = AddRange(trial.matrix, range);
  const double count = static_cast<double>(range.hi) - range.lo + 1;
  Sums mean{};
  for (int c = 0; c <= trial.NChan; ++c) {
    mean[c] = sums.sum[c] / count;
  }
  const Sums squares = AddSquaredDeviations(trial.matrix, range, mean);
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
