#include "impact/phases/work_units.hpp"

namespace velmora {

std::string UnitsOverTime(const std::string& units) {
  const std::string power = units.substr(0, units.find('/'));
  if (power == "W" || power == "mW" || power == "kW") {
    return power.substr(0, power.size() - 1) + "J" + units.substr(power.size());
  }
  return units.empty() ? "s" : units + ".s";
}

std::string PowerUnitsOf(const std::string& momentUnits) {
  return std::string(momentUnits.find("mm") != std::string::npos ? "mW" : "W") +
         (momentUnits.ends_with("/kg") ? "/kg" : "");
}

}  // namespace velmora
