#include "dsp/math/mean_deviation.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {

double MeanOf(std::span<const double> values) {
  double sum = 0.0;
  for (const double value : values) {
    sum += value;
  }
  return sum / static_cast<double>(values.size());
}

MeanDeviation MeanDeviationOf(std::span<const double> values) {
  const auto n = static_cast<double>(values.size());
  const double mean = MeanOf(values);
  double squares = 0.0;
  double away = 0.0;
  for (const double value : values) {
    squares += (value - mean) * (value - mean);
    away += value - mean;
  }
  const double variance = n > 1 ? (squares - away * away / n) / (n - 1) : 0.0;
  return {.mean = mean, .deviation = std::sqrt(std::max(variance, 0.0))};
}

}  // namespace velmora
