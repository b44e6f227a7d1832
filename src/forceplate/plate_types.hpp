#pragma once

#include <array>
#include <cstdint>

#include "core/command_memory.hpp"

namespace velmora {

/// How a plate tells its forces: a Kistler plate by eight channels of its sensors (fx12 fx34 fy14 fy23 fz1
/// fz2 fz3 fz4), an AMTI plate by six channels (Fx Fy Fz Mx My Mz).
enum class PlateFamily { Kistler, Amti };

inline constexpr std::int16_t kCustomPlate = 1;
inline constexpr std::int16_t kAmtiPlate = 5;

/// A row of the list of types; PlateType is its index.
struct PlateTypeEntry {
  const char* caption;
  double XYRange;
  double ZRange;
  double XSens;
  double YSens;
  double ZSens;
};

inline constexpr std::array kPlateTypes = {
    PlateTypeEntry{"Kistler 9261A", 5000, 10000, -7.86, -7.86, -3.50},
    PlateTypeEntry{"Custom", 5000, 10000, -7.78, -7.79, -3.86},
    PlateTypeEntry{"Kistler 9281B", 15720, 17200, -7.87, -7.86, -3.62},
    PlateTypeEntry{"Kistler &Slimline", 5000, 10000, -7.87, -7.87, -3.56},
    PlateTypeEntry{"Kistler &with Amps", 250, 2500, -4.8, -4.8, -4.46},
    PlateTypeEntry{"AMTI 18.25x20\"", 0, 0, 0, 0, 0},  // it has no ranges
    PlateTypeEntry{"Kistler &Large", 250, 2500, -7.8, -7.8, -3.5},
    PlateTypeEntry{"Kistler &Glass", 5000, 10000, -7.4, -7.4, -3.8},
};

constexpr PlateFamily FamilyOf(const ForcePlate& plate) {
  return plate.PlateType == kAmtiPlate ? PlateFamily::Amti : PlateFamily::Kistler;
}

/// Channels of a plate, before its forces are reduced and after.
constexpr int ChannelsOf(PlateFamily family) {
  return family == PlateFamily::Amti ? 6 : 8;
}

}  // namespace velmora
