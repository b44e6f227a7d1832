#include "impact/acceleration_units.hpp"

#include <algorithm>
#include <array>

#include "core/text/text.hpp"

namespace velmora {

std::optional<AccelerationUnits> AccelerationUnitsOf(std::string_view units) {
  constexpr std::array<std::string_view, 2> gravities = {"g", "g's"};
  constexpr std::array<std::string_view, 7> metric = {"m/s^2",  "m/s\u00B2", "m/s2",  "m/s/s",
                                                      "m/s**2", "m.s-2",     "m.s^-2"};
  const auto among = [units](const auto& names) {
    return std::any_of(names.begin(), names.end(),
                       [units](std::string_view name) { return EqualNoCase(units, name); });
  };
  if (among(gravities)) {
    return AccelerationUnits::G;
  }
  if (among(metric)) {
    return AccelerationUnits::Metric;
  }
  return std::nullopt;
}

std::optional<AccelerationUnits> AccelerationUnitsOf(const Trial& trial, int channel) {
  return channel < 1 ? std::nullopt : AccelerationUnitsOf(Trim(trial.ChanUnits[channel].Text()));
}

}  // namespace velmora
