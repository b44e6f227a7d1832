#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/gravity/body_motion.hpp"
#include "forceplate/gravity/jump.hpp"

namespace velmora {

enum class HorizontalMethod : std::int32_t { AsVertical, ZeroPoints, Pendulum };  // as the field numbers them

/// One horizontal direction.
struct HorizontalMotion {
  AxisMotion motion;
  std::vector<double> pressure{};  // m; empty where the method has no use for it
};

/// What is known of the body and where it went.
struct GravityFound {
  SampleRange range;
  bool turned = false;             // the forces pointed down
  std::vector<double> vertical{};  // N, upwards
  double mass = 0.0;               // kg
  double weight = 0.0;             // N
  double quietForce = 0.0;         // N, mean of the quiet interval
  double quietDeviation = 0.0;     // N
  DriftRule drift = DriftRule::StartsAtRest;
  HorizontalMethod horizontal = HorizontalMethod::AsVertical;
  AxisMotion z{};
  std::optional<HorizontalMotion> x{};
  std::optional<HorizontalMotion> y{};
  std::optional<Jump> jump{};
};

/// The table of quantities, and the picture: of a jump the force with its moments marked, else the ways of
/// the centre of gravity.
Results GravityResults(const Workbench& workbench, const GravityFound& found, ResultHead head);

}  // namespace velmora
