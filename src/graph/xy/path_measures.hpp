#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace velmora {

/// What a path in a plane measures, in the units of its axes.
struct PathMeasures {
  std::int64_t count = 0;
  std::optional<double> loopArea{};  // closed from the last point to the first; counter-clockwise above 0
  std::optional<double> length{};    // open
  std::optional<double> r{};         // Pearson's; none when a coordinate is constant
  std::optional<double> slope{};     // of y on x by least squares; none when x is constant
};

/// As many x as y, all of them numbers. The area is half the sum of x(i) y(i+1) - x(i+1) y(i) (the "shoelace"
/// formula of Gauss). None of the measures is there without a point.
PathMeasures MeasurePath(std::span<const double> x, std::span<const double> y);

}  // namespace velmora
