#include "emg/emg_statistics.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace velmora {
namespace {

// What one channel adds up to.
struct Totals {
  double sum = 0.0;
  double absolute = 0.0;
  double squares = 0.0;
  double largest = 0.0;
  std::int32_t crossings = 0;
  std::int32_t peaks = 0;
};

Totals AddUpPlain(const SampleMatrix& matrix, int channel, SampleRange range, double threshold) {
  const auto sample = [&](std::int32_t i) -> double { return matrix.Frame(i)[channel]; };
  Totals totals;
  double last = sample(range.lo);
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const double x = sample(i);
    const double magnitude = std::fabs(x);
    totals.sum += x;
    totals.absolute += magnitude;
    totals.squares += x * x;
    totals.largest = magnitude > totals.largest ? magnitude : totals.largest;
    if (magnitude >= threshold) {
      totals.crossings += last * x < 0 ? 1 : 0;
      last = x;
    }
    const bool inside = i > range.lo && i < range.hi;
    if (inside && (sample(i + 1) - x) * (x - sample(i - 1)) < 0 &&
        static_cast<float>(threshold) <= magnitude) {
      ++totals.peaks;
    }
  }
  return totals;
}

constexpr int kWidest = 16;
constexpr std::int64_t kFrames = 256;  // of a group before the next one: every line of memory comes in once

// Channels side by side, between two stretches of frames.
struct GroupState {
  int first = 0;  // channel
  double sum[kWidest] = {};
  double absolute[kWidest] = {};
  double squares[kWidest] = {};
  float largest[kWidest] = {};
  float last[kWidest] = {};    // of the samples that count for crossings
  float middle[kWidest] = {};  // the sample before
  std::int32_t rose[kWidest] = {};
  std::int32_t fell[kWidest] = {};
  std::int32_t crossings[kWidest] = {};
  std::int32_t peaks[kWidest] = {};
  float crossingThreshold[kWidest] = {};
  float peakThreshold[kWidest] = {};
};

#define SIMD_KERNEL "emg/emg_statistics_lanes.inc"
#include "core/simd_widths.inc"

struct Adder {
  int channels;
  void (*add)(const float* frame, long stride, long count, GroupState& state);
};

// The widest that the channels fill.
Adder AdderFor(SimdLevel level, int channels) {
  if (level == SimdLevel::Avx512 && channels >= avx512::kFloats) {
    return {avx512::kFloats, avx512::AddFrames};
  }
  if (level >= SimdLevel::Avx2 && channels >= avx2::kFloats) {
    return {avx2::kFloats, avx2::AddFrames};
  }
  return {sse2::kFloats, sse2::AddFrames};
}

// The least 32-bit number that is not below: magnitudes of samples reach both or neither.
float NotBelow(double threshold) {
  const auto near = static_cast<float>(threshold);
  return near < threshold ? std::nextafter(near, std::numeric_limits<float>::infinity()) : near;
}

GroupState StartGroup(const Trial& trial, SampleRange range, int first, int channels,
                      const PerChannel<double>& thresholds) {
  GroupState state;
  state.first = first;
  for (int lane = 0; lane < channels; ++lane) {
    const float start = trial.matrix.Frame(range.lo)[first + lane];
    state.last[lane] = start;
    state.middle[lane] = start;
    state.crossingThreshold[lane] = NotBelow(thresholds[first + lane]);
    state.peakThreshold[lane] = static_cast<float>(thresholds[first + lane]);
  }
  return state;
}

// The last group reaches back over channels that the one before it has, rather than leave single lanes.
PerChannel<Totals> AddUp(const Trial& trial, SampleRange range, const PerChannel<double>& thresholds,
                         const Adder& adder) {
  std::vector<GroupState> groups;
  for (int first = 1; first <= trial.NChan; first += adder.channels) {
    groups.push_back(StartGroup(trial, range, std::min(first, trial.NChan - adder.channels + 1),
                                adder.channels, thresholds));
  }
  const auto stride = static_cast<long>(trial.matrix.Stride());
  for (std::int64_t i = range.lo; i <= range.hi; i += kFrames) {
    const long count = std::min<std::int64_t>(kFrames, range.hi - i + 1);
    for (GroupState& state : groups) {
      adder.add(trial.matrix.Frame(i) + state.first, stride, count, state);
    }
  }
  PerChannel<Totals> totals{};
  for (const GroupState& state : groups) {
    for (int lane = 0; lane < adder.channels; ++lane) {
      totals[state.first + lane] = {.sum = state.sum[lane],
                                    .absolute = state.absolute[lane],
                                    .squares = state.squares[lane],
                                    .largest = state.largest[lane],
                                    .crossings = state.crossings[lane],
                                    .peaks = state.peaks[lane]};
    }
  }
  return totals;
}

PerChannel<EmgStatistics> StatisticsOf(const PerChannel<Totals>& totals, int channels, SampleRange range,
                                       double timeStep) {
  const double n = static_cast<double>(range.hi) - range.lo + 1;
  PerChannel<EmgStatistics> all{};
  for (int c = 1; c <= channels; ++c) {
    const Totals& of = totals[c];
    const double variance = (of.squares - of.sum * of.sum / n) / n;
    all[c] = {.mean = of.sum / n,
              .deviation = variance < 0 ? 0.0 : std::sqrt(variance),
              .meanAbsolute = of.absolute / n,
              .rms = std::sqrt(of.squares / n),
              .largest = of.largest,
              .sum = of.sum,
              .absoluteSum = of.absolute,
              .absoluteIntegral = of.absolute * timeStep,
              .zeroCrossings = of.crossings,
              .peaks = of.peaks};
  }
  return all;
}

}  // namespace

PerChannel<EmgStatistics> TakeEmgStatisticsPlain(const Trial& trial, SampleRange range,
                                                 const PerChannel<double>& thresholds, double timeStep) {
  PerChannel<Totals> totals{};
  for (int c = 1; c <= trial.NChan; ++c) {
    totals[c] = AddUpPlain(trial.matrix, c, range, thresholds[c]);
  }
  return StatisticsOf(totals, trial.NChan, range, timeStep);
}

PerChannel<EmgStatistics> TakeEmgStatistics(const Trial& trial, SampleRange range,
                                            const PerChannel<double>& thresholds, double timeStep,
                                            SimdLevel level) {
  if (trial.NChan < sse2::kFloats) {
    return TakeEmgStatisticsPlain(trial, range, thresholds, timeStep);
  }
  return StatisticsOf(AddUp(trial, range, thresholds, AdderFor(level, trial.NChan)), trial.NChan, range,
                      timeStep);
}

}  // namespace velmora
