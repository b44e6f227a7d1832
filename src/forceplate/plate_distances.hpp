#pragma once

#include "core/command_memory.hpp"

namespace velmora {

/// What optDistance says of the distances of a plate.
enum class DistanceUnit { AsEntered, Millimetres, Centimetres, Metres };

/// A distance of the plate in centimetres, in which the formulas give Ax and Ay in centimetres and Tz in
/// newton metres as they are labelled. One as entered is taken for centimetres as it stands.
inline double Centimetres(const ForcePlate& plate, double distance) {
  switch (static_cast<DistanceUnit>(plate.optDistance)) {
    case DistanceUnit::Millimetres:
      return distance / 10;
    case DistanceUnit::Metres:
      return distance * 100;
    case DistanceUnit::AsEntered:
    case DistanceUnit::Centimetres:
      break;
  }
  return distance;
}

}  // namespace velmora
