#include "forceplate/gravity/body_motion.hpp"

#include <cmath>
#include <cstddef>
#include <utility>

#include "dsp/math/mean_deviation.hpp"

namespace velmora {
namespace {

std::vector<double> Trapezoids(const std::vector<double>& rates, double dt) {
  std::vector<double> sums(rates.size());
  for (std::size_t i = 1; i < rates.size(); ++i) {
    sums[i] = sums[i - 1] + (rates[i - 1] + rates[i]) / 2 * dt;
  }
  return sums;
}

void TakeMeanOff(std::vector<double>& values) {
  const double mean = MeanOf(values);
  for (double& value : values) {
    value -= mean;
  }
}

/// A moment of the integration: a sample, or where the force passes zero between two.
struct Node {
  double time = 0.0;  // samples
  double acceleration = 0.0;
  double pressure = 0.0;
  bool isZero = false;
  bool isSample = true;
  // What the integrals from the zero before come to.
  double velocity = 0.0;
  double distance = 0.0;
};

std::vector<Node> NodesOf(std::span<const double> force, std::span<const double> pressure, double mass) {
  std::vector<Node> nodes;
  nodes.reserve(force.size() + force.size() / 8);
  for (std::size_t k = 0; k < force.size(); ++k) {
    nodes.push_back({.time = static_cast<double>(k),
                     .acceleration = force[k] / mass,
                     .pressure = pressure[k],
                     .isZero = force[k] == 0});
    if (k + 1 < force.size() && (force[k] > 0) != (force[k + 1] > 0) && force[k] != 0 && force[k + 1] != 0) {
      const double part = force[k] / (force[k] - force[k + 1]);
      nodes.push_back({.time = static_cast<double>(k) + part,
                       .pressure = pressure[k] + part * (pressure[k + 1] - pressure[k]),
                       .isZero = true,
                       .isSample = false});
    }
  }
  return nodes;
}

// Velocity and distance from node `from` on, up to `to` and with it. A zero on the way is none.
void Integrate(std::vector<Node>& nodes, std::size_t from, std::size_t to, double dt) {
  double velocity = 0.0;
  double distance = 0.0;
  for (std::size_t k = from + 1; k <= to; ++k) {
    const double step = (nodes[k].time - nodes[k - 1].time) * dt;
    const double before = velocity;
    velocity += (nodes[k - 1].acceleration + nodes[k].acceleration) / 2 * step;
    distance += (before + velocity) / 2 * step;
    nodes[k].velocity = velocity;
    nodes[k].distance = distance;
  }
}

/// Where a stretch of nodes begins, and how fast.
struct Beginning {
  double time = 0.0;  // samples
  double velocity = 0.0;
  double position = 0.0;
};

void Place(const Node& node, const Beginning& begin, double dt, AxisMotion& motion) {
  if (!node.isSample) {
    return;
  }
  const auto sample = static_cast<std::size_t>(node.time);
  motion.acceleration[sample] = node.acceleration;
  motion.velocity[sample] = begin.velocity + node.velocity;
  motion.position[sample] = begin.position + begin.velocity * ((node.time - begin.time) * dt) + node.distance;
}

// The way back from the first zero: the integrals run against time.
void PlaceBefore(std::vector<Node>& nodes, std::size_t first, const Beginning& begin, double dt,
                 AxisMotion& motion) {
  double velocity = 0.0;
  double distance = 0.0;
  for (std::size_t k = first; k-- > 0;) {
    const double step = (nodes[k + 1].time - nodes[k].time) * dt;
    const double behind = velocity;
    velocity -= (nodes[k].acceleration + nodes[k + 1].acceleration) / 2 * step;
    distance -= (behind + velocity) / 2 * step;
    nodes[k].velocity = velocity;
    nodes[k].distance = distance;
    Place(nodes[k], begin, dt, motion);
  }
}

}  // namespace

AxisMotion MotionByIntegral(std::vector<double> acceleration, double dt, DriftRule drift) {
  AxisMotion motion{.acceleration = std::move(acceleration), .velocity = {}, .position = {}};
  motion.velocity = Trapezoids(motion.acceleration, dt);
  std::vector<double>& v = motion.velocity;
  if (drift == DriftRule::EndsAtRest && v.size() > 1) {
    const double left = v.back();
    const auto steps = static_cast<double>(v.size() - 1);
    for (std::size_t i = 0; i < v.size(); ++i) {
      v[i] -= left * static_cast<double>(i) / steps;
    }
  } else if (drift == DriftRule::Steady) {
    TakeMeanOff(v);
  }
  motion.position = Trapezoids(v, dt);
  if (drift == DriftRule::Steady) {
    TakeMeanOff(motion.position);
  }
  return motion;
}

std::optional<AxisMotion> MotionByZeroPoints(std::span<const double> force, std::span<const double> pressure,
                                             double mass, double dt) {
  std::vector<Node> nodes = NodesOf(force, pressure, mass);
  std::vector<std::size_t> zeros;
  for (std::size_t k = 0; k < nodes.size(); ++k) {
    // Two that no number can tell apart are one.
    if (nodes[k].isZero && (zeros.empty() || nodes[k].time > nodes[zeros.back()].time)) {
      zeros.push_back(k);
    }
  }
  if (zeros.size() < 2) {
    return std::nullopt;
  }
  const std::size_t n = force.size();
  AxisMotion motion{.acceleration = std::vector<double>(n),
                    .velocity = std::vector<double>(n),
                    .position = std::vector<double>(n)};
  Beginning begin;
  double velocityAtZero = 0.0;
  for (std::size_t z = 0; z + 1 < zeros.size(); ++z) {
    const std::size_t from = zeros[z];
    const std::size_t to = zeros[z + 1];
    Integrate(nodes, from, to, dt);
    const double seconds = (nodes[to].time - nodes[from].time) * dt;
    const double travelled = nodes[to].pressure - nodes[from].pressure;
    begin = {.time = nodes[from].time,
             .velocity = (travelled - nodes[to].distance) / seconds,
             .position = nodes[from].pressure};
    velocityAtZero = begin.velocity + nodes[to].velocity;
    if (z == 0) {
      PlaceBefore(nodes, from, begin, dt, motion);
    }
    nodes[from].velocity = 0.0;
    nodes[from].distance = 0.0;
    for (std::size_t k = from; k < to; ++k) {
      Place(nodes[k], begin, dt, motion);
    }
  }
  const std::size_t last = zeros.back();
  begin = {.time = nodes[last].time, .velocity = velocityAtZero, .position = nodes[last].pressure};
  nodes[last].velocity = 0.0;
  nodes[last].distance = 0.0;
  Integrate(nodes, last, nodes.size() - 1, dt);
  for (std::size_t k = last; k < nodes.size(); ++k) {
    Place(nodes[k], begin, dt, motion);
  }
  return motion;
}

double PendulumFrequency(double height, double gravity) {
  const double h = 0.521 * height;
  return std::sqrt(gravity * h / (0.0533 * height * height + h * h));
}

// (2 + k) y(i) - y(i-1) - y(i+1) = k pressure(i), k = (w dt)^2, with y(0) = y(2) and y(n+1) = y(n-1): one
// sweep down and one up (Thomas); the diagonal outweighs the rest.
AxisMotion MotionOfPendulum(std::span<const double> pressure, double dt, double w) {
  const std::size_t n = pressure.size();
  const double k = (w * dt) * (w * dt);
  AxisMotion motion{.acceleration = std::vector<double>(n),
                    .velocity = std::vector<double>(n),
                    .position = std::vector<double>(n)};
  std::vector<double>& y = motion.position;
  if (n < 2) {
    y.assign(pressure.begin(), pressure.end());
    return motion;
  }
  std::vector<double> above(n);  // what is left right of the diagonal, below 0
  for (std::size_t i = 0; i < n; ++i) {
    const double left = i == 0 ? 0.0 : i + 1 == n ? -2.0 : -1.0;
    const double right = i == 0 ? -2.0 : -1.0;
    const double pivot = 2 + k - left * (i > 0 ? above[i - 1] : 0.0);
    above[i] = right / pivot;
    y[i] = (k * pressure[i] - left * (i > 0 ? y[i - 1] : 0.0)) / pivot;
  }
  for (std::size_t i = n - 1; i-- > 0;) {
    y[i] -= above[i] * y[i + 1];
  }
  for (std::size_t i = 0; i < n; ++i) {
    motion.acceleration[i] = w * w * (y[i] - pressure[i]);
    motion.velocity[i] = i == 0 || i + 1 == n ? 0.0 : (y[i + 1] - y[i - 1]) / (2 * dt);
  }
  return motion;
}

}  // namespace velmora
