#include "emg/emg_statistics.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// Frame by frame: the channels of a sample lie side by side and every loop over them has no branch, so that
// it becomes vectors; each sum keeps its order.
struct Sums {
  PerChannel<double> sum{};
  PerChannel<double> absolute{};
  PerChannel<double> squares{};
  PerChannel<double> largest{};
};

Sums AddUp(const SampleMatrix& matrix, SampleRange range) {
  const int channels = matrix.Channels();
  Sums sums;
  double* sum = sums.sum.data();
  double* absolute = sums.absolute.data();
  double* squares = sums.squares.data();
  double* largest = sums.largest.data();
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const float* frame = matrix.Frame(i);
    for (int c = 0; c <= channels; ++c) {
      const double x = frame[c];
      const double a = std::fabs(x);
      sum[c] += x;
      absolute[c] += a;
      squares[c] += x * x;
      largest[c] = a > largest[c] ? a : largest[c];
    }
  }
  return sums;
}

using Counts = PerChannel<std::int32_t>;

Counts CountCrossings(const SampleMatrix& matrix, SampleRange range, const PerChannel<double>& thresholds) {
  const int channels = matrix.Channels();
  Counts counts{};
  PerChannel<double> before{};
  const double* threshold = thresholds.data();
  std::int32_t* count = counts.data();
  double* last = before.data();
  std::copy_n(matrix.Frame(range.lo), channels + 1, last);
  for (std::int32_t i = range.lo + 1; i <= range.hi; ++i) {
    const float* frame = matrix.Frame(i);
    for (int c = 0; c <= channels; ++c) {
      const double x = frame[c];
      const bool counts_ = std::fabs(x) >= threshold[c];
      count[c] += static_cast<std::int32_t>(counts_) & static_cast<std::int32_t>(last[c] * x < 0);
      last[c] = counts_ ? x : last[c];
    }
  }
  return counts;
}

Counts CountPeaks(const SampleMatrix& matrix, SampleRange range, const PerChannel<double>& thresholds) {
  const int channels = matrix.Channels();
  Counts counts{};
  PerChannel<float> single{};
  std::transform(thresholds.begin(), thresholds.end(), single.begin(),
                 [](double threshold) { return static_cast<float>(threshold); });
  const float* threshold = single.data();
  std::int32_t* count = counts.data();
  for (std::int32_t i = range.lo + 1; i < range.hi; ++i) {
    const float* before = matrix.Frame(i - 1);
    const float* frame = matrix.Frame(i);
    const float* after = matrix.Frame(i + 1);
    for (int c = 0; c <= channels; ++c) {
      const double rise = static_cast<double>(frame[c]) - before[c];
      const double next = static_cast<double>(after[c]) - frame[c];
      count[c] += static_cast<std::int32_t>(next * rise < 0) &
                  static_cast<std::int32_t>(threshold[c] <= std::fabs(frame[c]));
    }
  }
  return counts;
}

}  // namespace

PerChannel<EmgStatistics> TakeEmgStatistics(const Trial& trial, SampleRange range,
                                            const PerChannel<double>& thresholds, double timeStep) {
  const Sums sums = AddUp(trial.matrix, range);
  const Counts crossings = CountCrossings(trial.matrix, range, thresholds);
  const Counts peaks = CountPeaks(trial.matrix, range, thresholds);
  const double n = static_cast<double>(range.hi) - range.lo + 1;
  PerChannel<EmgStatistics> all{};
  for (int c = 1; c <= trial.NChan; ++c) {
    const double variance = (sums.squares[c] - sums.sum[c] * sums.sum[c] / n) / n;
    all[c] = {.mean = sums.sum[c] / n,
              .deviation = variance < 0 ? 0.0 : std::sqrt(variance),
              .meanAbsolute = sums.absolute[c] / n,
              .rms = std::sqrt(sums.squares[c] / n),
              .largest = sums.largest[c],
              .sum = sums.sum[c],
              .absoluteSum = sums.absolute[c],
              .absoluteIntegral = sums.absolute[c] * timeStep,
              .zeroCrossings = crossings[c],
              .peaks = peaks[c]};
  }
  return all;
}

}  // namespace velmora
