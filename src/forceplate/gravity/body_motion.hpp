#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// How a double integral is kept from drifting.
enum class DriftRule : std::int32_t {
  StartsAtRest,  // velocity 0 at the first sample, and nothing else known
  EndsAtRest,    // and at the last: what is left there goes evenly
  Steady,        // nothing moves on the whole: mean velocity and displacement are 0
};

/// Along one axis, by sample: m/s^2, m/s, m.
struct AxisMotion {
  std::vector<double> acceleration;
  std::vector<double> velocity;
  std::vector<double> position;  // a displacement where no centre of pressure tells the place
};

/// From acceleration (at least one sample) every `dt` seconds by trapezoids, twice. A body that ends at rest
/// need not end where it began: only the velocity is corrected for that.
AxisMotion MotionByIntegral(std::vector<double> acceleration, double dt, DriftRule drift);

/// The gravity line in a horizontal direction from a force (N), the centre of pressure (m) and the mass (kg):
/// where the force is zero, the line lies on the centre of pressure, and between two such moments the
/// acceleration is integrated twice. Before the first and behind the last the integration goes on. Nothing
/// with fewer than two zeros. (Zatsiorsky and King 1998, J. Biomech. 31, 161.)
std::optional<AxisMotion> MotionByZeroPoints(std::span<const double> force, std::span<const double> pressure,
                                             double mass, double dt);

/// The gravity line from the centre of pressure (m) alone, of a body that sways as one piece about its
/// ankles: y'' = w^2 (y - pressure). Mirrored at both ends. (Breniere 1996, J. Mot. Behav. 28, 291; Winter
/// 1995.)
AxisMotion MotionOfPendulum(std::span<const double> pressure, double dt, double w);

/// w of a body of `height` m, in 1/s: its centre 0.521 of the height above the ankles, its moment of inertia
/// from Winter 2009, table 4.1.
double PendulumFrequency(double height, double gravity);

}  // namespace velmora
