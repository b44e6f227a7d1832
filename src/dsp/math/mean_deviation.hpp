#pragma once

#include <span>

namespace velmora {

/// The mean of at least one value.
double MeanOf(std::span<const double> values);

struct MeanDeviation {
  double mean = 0.0;
  double deviation = 0.0;  // n - 1; 0 of a single value
};
/// Two passes: what the deviations' own sum is not exactly 0 by is corrected for (Chan, Golub and LeVeque
/// 1983). At least one value.
MeanDeviation MeanDeviationOf(std::span<const double> values);

}  // namespace velmora
