#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace velmora {

/// What a vertical force is judged by.
struct JumpRule {
  double weight = 0.0;  // N, above 0
  double gravity = 9.80665;
  double unloaded = 20.0;  // N: less is a flight
  double moves = 5.0;      // % of the weight that the force differs by once the body moves
};

/// A jump on a plate; samples count from 0.
struct Jump {
  std::int64_t start = 0;                 // the first sample that moves
  std::optional<std::int64_t> lowest{};   // the first one that rises behind it
  std::int64_t takeOff = 0;               // the first unloaded one
  std::int64_t landing = 0;               // the first loaded one behind
  double flightTime = 0.0;                // s
  double takeOffVelocity = 0.0;           // m/s
  std::optional<double> impulseHeight{};  // m, by that velocity; nothing when it points down
  double flightHeight = 0.0;              // m, g t^2/8
  std::optional<double> depth{};          // m that the body sinks to the lowest point
  double peakForce = 0.0;                 // N, before take-off
  double peakPower = 0.0;                 // W
  double netImpulse = 0.0;                // N.s
};

/// The first flight of at least 0.1 s between two contacts of at least 0.05 s (spikes are no landing), and
/// the push before it: velocity from the start of the movement, where it is 0, by trapezoids. Nothing without
/// a flight. `rate` in Hz. (Linthorne 2001, Am. J. Phys. 69, 1198; Dowling and Vamos 1993.)
std::optional<Jump> FindJump(std::span<const double> force, double rate, const JumpRule& rule);

}  // namespace velmora
