#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/command_memory.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// A place on the floor, from above: X to the right, Y up the page, in the unit of Ax and Ay, with the
/// centre of plate 1 at 0, 0.
struct PlatePoint {
  double x = 0.0;
  double y = 0.0;
};

/// A place of a plate on the floor. Plates count from 0; the third and fourth, of which nobody says where
/// they are, lie where the first lies.
PlatePoint OnTheFloor(const PlateMemory& plates, int plate, PlatePoint local);

/// Its four corners, or nothing while it has no width or length.
std::optional<std::array<PlatePoint, 4>> OutlineOf(const PlateMemory& plates, int plate);

/// Where the sensors of fz1 to fz4 lie by the plate's formulas; nothing for a plate that tells moments.
std::optional<std::array<PlatePoint, 4>> SensorsOf(const PlateMemory& plates, int plate);

/// What a plate would say of its raw channels.
struct VerticalForce {
  double atFirst = 0.0;  // newtons, of sample 1
  double largest = 0.0;  // of the largest magnitude
};

/// Nothing when the trial has not got the channels of the plate.
std::optional<VerticalForce> VerticalForceOf(const Trial& trial, const PlateMemory& plates, int plate);

/// The channel before a plate's first, of plates of one family: where the file has it, as long as nobody says
/// another first channel, which a BioWare file does not ask for.
std::int64_t BaseChannelOf(const Trial& trial, const PlateMemory& plates, int plate);

/// What the file says the channels of a six-channel plate there are; nullptr: they are loads in N and N.m.
const PlateMatrix* LoadsOfFile(const Trial& trial, const PlateMemory& plates, int plate);

}  // namespace velmora
