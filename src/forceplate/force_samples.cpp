#include "forceplate/force_samples.hpp"

#include <string>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {

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
