#include "forceplate/gravity/jump.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "core/text/numbers.hpp"
#include "events/contacts.hpp"

namespace velmora {
namespace {

constexpr double kShortestContact = 0.05;  // s
constexpr double kShortestFlight = 0.1;    // s

/// From the first unloaded sample to the first loaded one behind.
struct Flight {
  std::int64_t takeOff = 0;
  std::int64_t landing = 0;
};

std::optional<Flight> FindFlight(std::span<const double> force, double rate, double unloaded) {
  const std::vector<Contact> contacts = FindContacts(
      force, {.on = unloaded, .off = unloaded, .shortest = RoundHalfEven(kShortestContact * rate)});
  for (std::size_t k = 0; k + 1 < contacts.size(); ++k) {
    const Flight flight{contacts[k].last + 1, contacts[k + 1].first};
    if (static_cast<double>(flight.landing - flight.takeOff) >= kShortestFlight * rate) {
      return flight;
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<Jump> FindJump(std::span<const double> force, double rate, const JumpRule& rule) {
  const std::optional<Flight> flight = FindFlight(force, rate, rule.unloaded);
  if (!flight) {
    return std::nullopt;
  }
  Jump jump{.takeOff = flight->takeOff, .landing = flight->landing};
  const auto moving = std::find_if(force.begin(), force.end(), [&rule](double value) {
    return std::abs(value - rule.weight) > rule.moves / 100 * rule.weight;
  });
  jump.start = std::min<std::int64_t>(moving - force.begin(), jump.takeOff);
  const double dt = 1.0 / rate;
  const double mass = rule.weight / rule.gravity;
  const auto at = [&force](std::int64_t i) { return force[static_cast<std::size_t>(i)]; };
  double velocity = 0.0;
  double height = 0.0;
  jump.peakForce = at(jump.start);
  for (std::int64_t i = jump.start + 1; i <= jump.takeOff; ++i) {
    const double before = velocity;
    velocity += ((at(i - 1) / mass - rule.gravity) + (at(i) / mass - rule.gravity)) / 2 * dt;
    height += (before + velocity) / 2 * dt;
    if (!jump.lowest && velocity > 0) {
      jump.lowest = i;
      jump.depth = std::max(-height, 0.0);
    }
    jump.peakForce = std::max(jump.peakForce, at(i));
    jump.peakPower = std::max(jump.peakPower, at(i) * velocity);
  }
  jump.flightTime = static_cast<double>(jump.landing - jump.takeOff) / rate;
  jump.takeOffVelocity = velocity;
  if (velocity > 0) {
    jump.impulseHeight = velocity * velocity / (2 * rule.gravity);
  }
  jump.flightHeight = rule.gravity * jump.flightTime * jump.flightTime / 8;
  jump.netImpulse = mass * velocity;
  return jump;
}

}  // namespace velmora
