#include "dsp/time_base/time_base.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace velmora {
namespace {

template <typename ValueOfIndex>  // of i-1
void FillAbscissa(Trial& trial, std::string_view label, std::string_view units, const ValueOfIndex& value) {
  const ChannelView abscissa = trial.Channel(0);
  for (std::int64_t i = 0; i < abscissa.size(); ++i) {
    abscissa[i] = static_cast<float>(value(static_cast<double>(i)));
  }
  trial.ChanLabel[0] = label;
  trial.ChanUnits[0] = units;
}

double Intervals(const Trial& trial) {
  return static_cast<double>(trial.NData) - 1.0;
}

using Runs = std::vector<ChannelRun>;

std::ptrdiff_t Width(const ChannelRun& run) {
  return run.last - run.first + 1;
}

void CopyFrame(Trial& trial, const Runs& runs, std::int64_t from, std::int64_t to) {
  for (const ChannelRun run : runs) {
    std::copy_n(trial.matrix.Frame(from) + run.first, Width(run), trial.matrix.Frame(to) + run.first);
  }
}

void ClearFrame(Trial& trial, const Runs& runs, std::int64_t i) {
  for (const ChannelRun run : runs) {
    std::fill_n(trial.matrix.Frame(i) + run.first, Width(run), 0.0F);
  }
}

// By way of a buffer: copies of a run are moved at the machine's full width, swaps float by float.
void SwapFrames(Trial& trial, const Runs& runs, std::int64_t i, std::int64_t j) {
  std::array<float, kMaxChannels> held;  // NOLINT: filled before it is read
  for (const ChannelRun run : runs) {
    float* a = trial.matrix.Frame(i) + run.first;
    float* b = trial.matrix.Frame(j) + run.first;
    std::copy_n(a, Width(run), held.data());
    std::copy_n(b, Width(run), a);
    std::copy_n(held.data(), Width(run), b);
  }
}

void ReverseFrames(Trial& trial, const Runs& runs, std::int64_t first, std::int64_t last) {
  for (; first < last; ++first, --last) {
    SwapFrames(trial, runs, first, last);
  }
}

}  // namespace

void UseSampleCount(Trial& trial) {
  FillAbscissa(trial, "Count", "n", [](double index) { return index + 1; });
  trial.Duration = trial.NData;
  trial.Rate = Intervals(trial) / trial.Duration;
}

void UsePercentage(Trial& trial) {
  const double intervals = Intervals(trial);
  FillAbscissa(trial, "Percentage", "%", [intervals](double index) { return index * 100 / intervals; });
  trial.Duration = 100.0;
  trial.Rate = intervals / 100;
}

void UseSeconds(Trial& trial, double rate, double duration) {
  trial.Rate = rate;
  trial.Duration = duration;
  trial.RebuildTimeColumn();
  trial.ChanLabel[0] = "Time";
  trial.ChanUnits[0] = "s";
}

void UseUserUnits(Trial& trial, double length, std::string_view label, std::string_view units) {
  const double intervals = Intervals(trial);
  FillAbscissa(trial, label, units, [=](double index) { return index * length / intervals; });
  trial.Duration = length;
}

void UseFrames(Trial& trial, double recordsPerFrame, double rate, double duration) {
  const double intervals = Intervals(trial);
  const double step = (rate / recordsPerFrame) * duration / intervals;
  FillAbscissa(trial, "Frame", "#", [step](double index) { return index * step; });
  trial.Duration = intervals * step;
}

void SpreadAbscissa(Trial& trial, double first, double last) {
  const double intervals = Intervals(trial);
  FillAbscissa(trial, trial.ChanLabel[0].Text(), trial.ChanUnits[0].Text(),
               [=](double index) { return first + index * (last - first) / intervals; });
}

void ReverseSamples(Trial& trial) {
  ReverseFrames(trial, {{1, trial.NChan}}, 1, trial.NData);
}

void ShiftSamples(Trial& trial, const ChannelList& channels, std::int32_t shift) {
  const Runs runs = RunsOf(channels);
  const std::int64_t count = trial.NData;
  if (shift > 0) {
    for (std::int64_t i = count; i > shift; --i) {
      CopyFrame(trial, runs, i - shift, i);
    }
    for (std::int64_t i = 1; i <= shift; ++i) {
      ClearFrame(trial, runs, i);
    }
    return;
  }
  for (std::int64_t i = 1; i <= count + shift; ++i) {
    CopyFrame(trial, runs, i - shift, i);
  }
  for (std::int64_t i = count + shift + 1; i <= count; ++i) {
    ClearFrame(trial, runs, i);
  }
}

// Reversing the whole and then each of the two parts needs no second matrix, and every frame is moved
// twice, always next to the one before (Gries and Mills 1981, "Swapping sections").
void RotateSamples(Trial& trial, const ChannelList& channels, std::int32_t shift) {
  const Runs runs = RunsOf(channels);
  const std::int64_t count = trial.NData;
  const std::int64_t head = shift > 0 ? shift : count + shift;
  if (shift == 0) {
    return;
  }
  ReverseFrames(trial, runs, 1, count);
  ReverseFrames(trial, runs, 1, head);
  ReverseFrames(trial, runs, head + 1, count);
}

}  // namespace velmora
