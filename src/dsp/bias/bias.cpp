#include "dsp/bias/bias.hpp"

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "core/text/numbers.hpp"
#include "dsp/math/channel_math.hpp"

namespace velmora {
namespace {

// Adds `count` frames from `first` on, going up or down by `step`.
void AddFrames(const Trial& trial, std::int64_t first, std::int64_t count, int step,
               PerChannel<float>& levels) {
  for (int c = 1; c <= trial.NChan; ++c) {
    levels[c] = 0.0F;
  }
  float* __restrict total = levels.data();
  for (std::int64_t k = 0; k < count; ++k) {
    const float* x = trial.matrix.Frame(first + k * step);
    for (int c = 1; c <= trial.NChan; ++c) {
      total[c] = total[c] + x[c];
    }
  }
}

// 64-bit quotients rounded once; a 32-bit divisor makes that the 32-bit quotient.
void DivideLevels(const Trial& trial, double divisor, PerChannel<float>& levels) {
  for (int c = 1; c <= trial.NChan; ++c) {
    levels[c] = static_cast<float>(levels[c] / divisor);
  }
}

void FindSlopes(const Trial& trial, const ChannelList& channels, PerChannel<float>& slopes) {
  for (const int c : channels) {
    const double rise = double{trial.Data(trial.NData, c)} - double{trial.Data(1, c)};
    slopes[c] = static_cast<float>(rise / (trial.NData - 1.0));
  }
}

// One missing sample among those that are averaged makes a level that would leave no sample of its channel,
// and some channels with their bias and some without would be hard to tell from each other later.
void RequireNumbers(const char* what, const ChannelList& channels, const PerChannel<float>& values) {
  for (const int c : channels) {
    if (!std::isfinite(values[c])) {
      throw std::range_error("The " + std::string(what) + " of channel " + ChannelNumber(c) +
                             " is not a number that data can hold.  No channel was changed.");
    }
  }
}

}  // namespace

void MeasureFirst(const Trial& trial, std::int32_t k, PerChannel<float>& levels) {
  AddFrames(trial, 1, k, 1, levels);
  DivideLevels(trial, static_cast<float>(k), levels);
}

void MeasureLast(const Trial& trial, std::int32_t k, PerChannel<float>& levels) {
  AddFrames(trial, trial.NData, k, -1, levels);
  DivideLevels(trial, static_cast<float>(k), levels);
}

void MeasureBetween(const Trial& trial, std::int32_t lo, std::int32_t hi, PerChannel<float>& levels) {
  const std::int64_t count = std::int64_t{hi} - lo + 1;
  AddFrames(trial, lo, count, 1, levels);
  DivideLevels(trial, static_cast<double>(count), levels);
}

void MeasureDrift(const Trial& trial, PerChannel<float>& levels) {
  for (int c = 1; c <= trial.NChan; ++c) {
    levels[c] = trial.Data(trial.NData, c) - trial.Data(1, c);
  }
}

void SubtractLevels(Trial& trial, const ChannelList& channels, const PerChannel<float>& levels) {
  RequireNumbers("bias level", channels, levels);
  PerChannel<float> negated{};
  for (const int c : channels) {
    negated[c] = -levels[c];
  }
  const auto record = [&](int last) {
    for (const int c : channels) {
      trial.ChanOffset[c] = c <= last ? trial.ChanOffset[c] - levels[c] : trial.ChanOffset[c];
    }
  };
  try {
    AddConstants(trial, channels, negated);  // x + (-k) is x - k to the bit
  } catch (const ArithmeticFault& fault) {
    record(fault.Channel());
    throw;
  }
  record(trial.NChan);
}

void RemoveDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& slopes) {
  FindSlopes(trial, channels, slopes);
  RequireNumbers("drift", channels, slopes);
  SubtractLines(trial, channels, {}, slopes);
}

void RemoveLevelAndDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& levels) {
  RequireNumbers("bias level", channels, levels);
  PerChannel<double> offsets = trial.ChanOffset;
  for (const int c : channels) {
    offsets[c] = levels[c];
  }
  FindSlopes(trial, channels, levels);
  RequireNumbers("drift", channels, levels);
  SubtractLines(trial, channels, offsets, levels);
  trial.ChanOffset = offsets;
}

}  // namespace velmora
