#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/trial/trial.hpp"

namespace velmora {

enum class AccelerationUnits : std::int32_t { G, Metric };  // as dialogues number them

inline constexpr double kStandardGravity = 9.80665;  // m/s^2

/// What units are called, in any of the usual ways; nothing when they are no acceleration's.
std::optional<AccelerationUnits> AccelerationUnitsOf(std::string_view units);
std::optional<AccelerationUnits> AccelerationUnitsOf(const Trial& trial, int channel);

}  // namespace velmora
