#include "dsp/bias/bias.hpp"

#include <cstddef>

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
  PerChannel<float> negated{};
  for (const int c : channels) {
    negated[c] = -levels[c];
  }
  AddConstants(trial, channels, negated);  // x + (-k) is x - k to the bit
  for (const int c : channels) {
    trial.ChanOffset[c] = trial.ChanOffset[c] - levels[c];
  }
}

void RemoveDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& slopes) {
  FindSlopes(trial, channels, slopes);
  SubtractLines(trial, channels, {}, slopes);
}

void RemoveLevelAndDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& levels) {
  PerChannel<double> offsets = trial.ChanOffset;
  for (const int c : channels) {
    offsets[c] = levels[c];
  }
  FindSlopes(trial, channels, levels);
  SubtractLines(trial, channels, offsets, levels);
  trial.ChanOffset = offsets;
}

}  // namespace velmora
