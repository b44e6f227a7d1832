#include "formats/fixed_decimals.hpp"

#include <algorithm>
#include <cmath>
#include <string>

namespace velmora {
namespace {

PerChannel<float> LargestIn(const Trial& trial, SampleRange range) {
  PerChannel<float> largest{};
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const float* frame = trial.matrix.Frame(i);
    for (int c = 1; c <= trial.NChan; ++c) {
      const float magnitude = std::abs(frame[c]);
      largest[c] = magnitude > largest[c] ? magnitude : largest[c];
    }
  }
  return largest;
}

}  // namespace

// Volts of an EMG, most of all: of 0.0004 V four decimals leave one digit.
void TellFewDigits(Workbench& workbench, int channels, SampleRange range, int decimals) {
  constexpr double kFewestSteps = 100.0;
  constexpr int kShown = 3;
  const Trial& trial = workbench.trial;
  const PerChannel<float> largest = LargestIn(trial, range);
  std::string names;
  int found = 0;
  for (int c = 1; c <= channels; ++c) {
    if (largest[c] > 0.0F && largest[c] * std::pow(10.0, decimals) < kFewestSteps) {
      names += ++found > kShown ? "" : (names.empty() ? "" : ", ") + ChannelInWords(trial, c);
    }
  }
  if (found > 0) {
    AddNotice(workbench, std::to_string(decimals) + " decimals leave fewer than 3 digits of the values of " +
                             names +
                             (found > kShown ? " and " + std::to_string(found - kShown) + " more" : "") +
                             " in the saved file. A .VMB file keeps them.");
  }
}

}  // namespace velmora
