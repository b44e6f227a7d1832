#include "dsp/math/prediction_ellipse.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace velmora {
namespace {

double MeanOf(std::span<const double> values) {
  double sum = 0.0;
  for (const double value : values) {
    sum += value;
  }
  return sum / static_cast<double>(values.size());
}

}  // namespace

std::optional<PredictionEllipse> PredictionEllipse95(std::span<const double> x, std::span<const double> y) {
  if (x.size() < 3) {
    return std::nullopt;
  }
  const auto n = static_cast<double>(x.size());
  PredictionEllipse ellipse{.x = MeanOf(x), .y = MeanOf(y)};
  double sxx = 0.0;
  double sxy = 0.0;
  double syy = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double dx = x[i] - ellipse.x;
    const double dy = y[i] - ellipse.y;
    sxx += dx * dx;
    sxy += dx * dy;
    syy += dy * dy;
  }
  sxx /= n - 1;
  sxy /= n - 1;
  syy /= n - 1;
  const double k = (n * n - 1) / n * (std::pow(0.05, -2 / (n - 2)) - 1);
  const double spread = std::hypot(sxx - syy, 2 * sxy);
  ellipse.major = std::sqrt((sxx + syy + spread) / 2 * k);
  ellipse.minor = std::sqrt(std::max((sxx + syy - spread) / 2, 0.0) * k);
  ellipse.angle = std::atan2(2 * sxy, sxx - syy) / 2 * (180 / std::numbers::pi);
  return ellipse;
}

}  // namespace velmora
