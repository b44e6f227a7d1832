#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// Plates of eight channels (Kistler) or of six (AMTI).
enum class CombineKind : std::int16_t { EightChannels = 0, SixChannels = 1 };

/// Where plate 2 lies from plate 1, and where the walk goes.
struct PlateSpacing {
  double X = 0.0;            // cm
  double Y = 0.0;            // cm
  double angle = 0.0;        // degrees, plate 2
  double progression = 0.0;  // degrees
};

/// Makes one resultant of two reduced plates, the first from channel base+1, the second right behind it: it
/// takes the place of the first. Plate 1 is shifted by half the spacing, plate 2 by all of it; the turn
/// into the direction of progression uses each component as the line before left it. A vertical sum of 0
/// gives 0 for Ax, Ay, Tz and the coefficient of friction.
/// Throws std::out_of_range when the trial has not got the channels.
void CombineTwoPlates(Trial& trial, int base, CombineKind kind, const PlateSpacing& spacing,
                      const Turn& turn = {});

}  // namespace velmora
