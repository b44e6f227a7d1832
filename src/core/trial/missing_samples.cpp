#include "core/trial/missing_samples.hpp"

#include <cmath>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {

std::int64_t MissingSamples(const Trial& trial, int channel, SampleRange range) {
  std::int64_t missing = 0;
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    missing += std::isfinite(trial.Data(i, channel)) ? 0 : 1;
  }
  return missing;
}

bool RefuseMissing(Workbench& workbench, int channel, SampleRange range) {
  const std::int64_t missing = MissingSamples(workbench.trial, channel, range);
  if (missing == 0) {
    return false;
  }
  ShowRefusal(workbench, {.title = "Missing Data",
                          .text = "Channel " + ChannelNumber(channel) + " has " + std::to_string(missing) +
                                  " samples that are no numbers between samples " + std::to_string(range.lo) +
                                  " and " + std::to_string(range.hi) + ".",
                          .icon = Icon::Exclamation});
  LeftOut(workbench, channel, CountOf(missing, "sample") + " that are no numbers");
  return true;
}

std::vector<int> WithoutMissing(Workbench& workbench, const std::vector<int>& channels, SampleRange range) {
  std::vector<int> whole;
  for (const int c : channels) {
    if (!RefuseMissing(workbench, c, range)) {
      whole.push_back(c);
    }
  }
  return whole;
}

}  // namespace velmora
