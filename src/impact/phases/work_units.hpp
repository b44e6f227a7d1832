#pragma once

#include <string>

namespace velmora {

/// Units of an integral over time: joules of watts ("mW/kg" gives "mJ/kg"), else the units with ".s".
std::string UnitsOverTime(const std::string& units);

/// Units of a moment times an angular velocity in radians: "W", "mW" of newton millimetres, with "/kg" where
/// the moment has it.
std::string PowerUnitsOf(const std::string& momentUnits);

}  // namespace velmora
