#pragma once

#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// Which channels give the power, and how the motion is to be read.
struct MomentPowerRule {
  int moment = 1;
  int motion = 2;
  bool isAngle = false;  // an angle, which is differentiated; else an angular velocity
  bool inDegrees = false;
};

/// P(i) = M(i) w(i) over the whole trial, rounded once to 32 bits (Winter 2009, chapter 6). An angle is
/// differentiated by central differences, each rounded to 32 bits, which needs at least three samples. Throws
/// std::range_error where a product of numbers is none that a sample can hold.
std::vector<float> MomentPower(const Trial& trial, const MomentPowerRule& rule);

}  // namespace velmora
