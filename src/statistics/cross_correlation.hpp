#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/questions/long_work.hpp"

namespace velmora {

/// What r(k) is divided by: the spread over the whole range, or that of the stretch where both lie at this
/// lag.
enum class LagNorm : std::int32_t { WholeRange, Overlap };

/// How far y follows x at every lag from -K to K samples: entry K + k is r(k) = sum over i of dx(i) dy(i+k),
/// with deviations from the means of the range and both samples inside it, divided as `norm` says. Above 0
/// means that **y follows x** by k samples (Bendat and Piersol). A lag at which a stretch does not vary has
/// NaN. `x` and `y` are as long, and numbers; K is below their length. Sums above a million products go
/// through the fast transform. Empty when `goesOn`, asked between the transforms, ends it.
std::vector<double> CrossCorrelate(std::span<const float> x, std::span<const float> y,
                                   std::int32_t largestLag, LagNorm norm, const GoesOn& goesOn = {});

/// The sums themselves, by both ways: equal to about 1e-12 of sqrt(S(x,x) S(y,y)).
std::vector<double> LagSumsPlain(std::span<const double> dx, std::span<const double> dy,
                                 std::int32_t largestLag);
std::vector<double> LagSumsByTransform(std::span<const double> dx, std::span<const double> dy,
                                       std::int32_t largestLag, const GoesOn& goesOn = {});

/// Where |r| is largest; of equal ones, to 1e-12, the smaller lag in size, then the negative.
struct BestLag {
  std::int32_t samples = 0;
  double between = 0.0;  // samples and the part by which a parabola through three points peaks beside it
  double r = 0.0;        // of that parabola, held to -1 to 1
};
/// None where no r is a number.
std::optional<BestLag> FindLag(std::span<const double> r);

}  // namespace velmora
