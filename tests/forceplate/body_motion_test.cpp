// The ways of the centre of gravity against motions that are known in closed form.
#include "forceplate/gravity/body_motion.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>

#include "core/text/numbers.hpp"
#include "support/signals.hpp"

namespace velmora::test {
namespace {

using Values = std::vector<double>;

/// So many samples of a function of time.
Values InTime(int n, double dt, const std::function<double(double t)>& of) {
  return Sampled<double>(n, [&](int i) { return of(i * dt); });
}

/// The largest difference from sample `from` to `to`.
double Apart(const Values& found, const Values& expected) {
  double most = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    most = std::max(most, std::abs(found[i] - expected[i]));
  }
  return most;
}

TEST(BodyMotion, ThreeWaysOutOfDrift) {
  // Two periods of 1 Hz up and down by 5 cm, from the top.
  constexpr double dt = 0.001;
  constexpr double w = 2 * Pi;
  constexpr double size = 0.05;
  constexpr int n = 2001;
  const Values a = InTime(n, dt, [](double t) { return -size * w * w * std::cos(w * t); });
  const Values v = InTime(n, dt, [](double t) { return -size * w * std::sin(w * t); });
  const Values z = InTime(n, dt, [](double t) { return size * std::cos(w * t); });
  Values fromTop = z;
  for (double& value : fromTop) {
    value -= size;
  }
  const AxisMotion rest = MotionByIntegral(a, dt, DriftRule::StartsAtRest);
  EXPECT_LT(Apart(rest.velocity, v), 2e-6);
  EXPECT_LT(Apart(rest.position, fromTop), 2e-6);
  EXPECT_EQ(rest.acceleration, a);
  // A mass that is 0.2 % too small: 2 cm/s^2 too many, 4 cm after two seconds.
  Values heavy = a;
  for (double& value : heavy) {
    value += 0.02;
  }
  EXPECT_NEAR(MotionByIntegral(heavy, dt, DriftRule::StartsAtRest).position.back(), 0.04, 1e-6);
  const AxisMotion ends = MotionByIntegral(heavy, dt, DriftRule::EndsAtRest);
  EXPECT_LT(Apart(ends.velocity, v), 2e-6);
  EXPECT_LT(Apart(ends.position, fromTop), 2e-6);
  const AxisMotion steady = MotionByIntegral(a, dt, DriftRule::Steady);
  EXPECT_NEAR(std::accumulate(steady.velocity.begin(), steady.velocity.end(), 0.0), 0, 1e-9);
  EXPECT_NEAR(std::accumulate(steady.position.begin(), steady.position.end(), 0.0), 0, 1e-9);
  EXPECT_LT(Apart(steady.position, z), 1e-4) << "the first sample counts twice in the mean";
}

TEST(BodyMotion, ZeroPointsFindPlaceAndDriftOfASway) {
  // x = 0.01 + 0.002 t + 0.006 cos(2 pi 0.4 t - 1) of 70 kg; the pressure runs ahead of it and meets it where
  // the force is zero.
  constexpr double dt = 0.01;
  constexpr double w = 2 * Pi * 0.4;
  constexpr double mass = 70;
  constexpr int n = 1000;
  const auto sway = [](double t) { return 0.006 * std::cos(w * t - 1); };
  const auto line = [](double t) { return 0.01 + 0.002 * t; };
  const Values force = InTime(n, dt, [&](double t) { return -mass * w * w * sway(t); });
  const Values pressure = InTime(n, dt, [&](double t) { return line(t) + 1.7 * sway(t); });
  const auto found = MotionByZeroPoints(force, pressure, mass, dt);
  ASSERT_TRUE(found);
  EXPECT_LT(Apart(found->position, InTime(n, dt, [&](double t) { return line(t) + sway(t); })), 2e-6);
  EXPECT_LT(Apart(found->velocity,
                  InTime(n, dt, [&](double t) { return 0.002 - 0.006 * w * std::sin(w * t - 1); })),
            5e-6);
  // Zeros at samples, several in a row, and one that no number can tell from its neighbour's.
  const auto still = MotionByZeroPoints(Values{0, 0, 0, 0}, Values{1, 2, 4, 4}, mass, 1);
  ASSERT_TRUE(still);
  EXPECT_EQ(still->position, (Values{1, 2, 4, 4}));
  EXPECT_EQ(still->velocity, (Values{1, 2, 0, 0}));
  const auto touching = MotionByZeroPoints(Values{1, -1e-30, 1, -1, 1}, Values(5, 3.0), 1, 1);
  ASSERT_TRUE(touching);
  for (const double x : touching->position) {
    EXPECT_NEAR(x, 3, 1);
  }
  EXPECT_FALSE(MotionByZeroPoints(Values{1, 2, 3}, Values{1, 2, 3}, mass, dt));
  EXPECT_FALSE(MotionByZeroPoints(Values{1, 2, -3}, Values{1, 2, 3}, mass, dt)) << "one zero is not enough";
  EXPECT_FALSE(MotionByZeroPoints(Values{}, Values{}, mass, dt));
}

TEST(BodyMotion, APendulumFollowsSlowSwayAndNotFastSway) {
  // The equation in steps keeps a cosine that both ends mirror: smaller by k/(k + 2 - 2 cos(w dt)).
  constexpr double dt = 0.01;
  constexpr int n = 1001;
  const double own = PendulumFrequency(1.75, 9.80665);
  EXPECT_NEAR(own, std::sqrt(9.80665 * 0.91175 / (0.0533 * 3.0625 + 0.91175 * 0.91175)), 1e-12);
  EXPECT_NEAR(own, 3.0, 0.1) << "about half a hertz";
  const double k = own * own * dt * dt;
  for (const double hertz : {0.1, 0.5, 2.0}) {
    const double w = 2 * Pi * hertz;
    const Values pressure = InTime(n, dt, [w](double t) { return 0.03 + 0.01 * std::cos(w * t); });
    const double gain = k / (k + 2 - 2 * std::cos(w * dt));
    EXPECT_NEAR(gain, own * own / (own * own + w * w), 2e-3) << "the equation without steps";
    const AxisMotion found = MotionOfPendulum(pressure, dt, own);
    EXPECT_LT(
        Apart(found.position, InTime(n, dt, [&](double t) { return 0.03 + gain * 0.01 * std::cos(w * t); })),
        1e-12);
    EXPECT_LT(
        Apart(found.velocity, InTime(n, dt, [&](double t) { return -gain * 0.01 * w * std::sin(w * t); })),
        gain * 0.01 * w * w * w * dt * dt / 6 + 1e-12);
    EXPECT_LT(Apart(found.acceleration,
                    InTime(n, dt, [&](double t) { return own * own * (gain - 1) * 0.01 * std::cos(w * t); })),
              1e-10);
  }
  EXPECT_EQ(MotionOfPendulum(Values{5}, dt, own).position, Values{5});
  EXPECT_LT(Apart(MotionOfPendulum(Values{5, 5}, dt, own).position, Values{5, 5}), 1e-11);
}

}  // namespace
}  // namespace velmora::test
