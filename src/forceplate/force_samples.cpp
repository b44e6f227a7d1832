#include "forceplate/force_samples.hpp"

#include <string>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {

std::vector<double> SamplesOfRange(const Trial& trial, int channel, SampleRange range) {
  std::vector<double> samples;
  samples.reserve(static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    samples.push_back(trial.Data(i, channel));
  }
  return samples;
}

bool PointsDown(std::span<const double> vertical) {
  double sum = 0.0;
  for (const double force : vertical) {
    sum += force;
  }
  return sum < 0;
}

void TurnForce(std::span<double> force) {
  for (double& value : force) {
    value = -value;
  }
}

std::optional<double> MetresIn(const Trial& trial, int channel) {
  const std::string units = Trim(trial.ChanUnits[channel].Text());
  if (EqualNoCase(units, "m")) {
    return 1.0;
  }
  if (EqualNoCase(units, "cm")) {
    return 0.01;
  }
  return EqualNoCase(units, "mm") ? std::optional(0.001) : std::nullopt;
}

void TellIfNotNewtons(Workbench& workbench, int channel) {
  const std::string units = Trim(workbench.trial.ChanUnits[channel].Text());
  if (units.empty() || EqualNoCase(units, "N") || EqualNoCase(units, "newton") ||
      EqualNoCase(units, "newtons")) {
    return;
  }
  ShowRefusal(workbench, {.title = "Not in Newtons",
                          .text = "Channel " + ChannelNumber(channel) + " is in " + OneLine(units) +
                                  ".  It is taken as if it were in newtons.",
                          .icon = Icon::Exclamation});
}

}  // namespace velmora
