#pragma once

#include <numbers>
#include <optional>
#include <span>

namespace velmora {

/// The ellipse in which the next point of a plane would fall with a probability of 95 %. Lengths in the
/// units of the points.
struct PredictionEllipse {
  double x = 0.0;  // its middle: the means
  double y = 0.0;
  double major = 0.0;  // semi-axes
  double minor = 0.0;
  double angle = 0.0;  // of the major axis from that of x, towards y; degrees, above -90 to 90

  [[nodiscard]] double Area() const { return std::numbers::pi * major * minor; }
};

/// Semi-axes sqrt(lambda k), with lambda the eigenvalues of the covariance (n - 1) and
/// k = 2 (n + 1) (n - 1)/(n (n - 2)) F(0.95; 2, n - 2), which is (n^2 - 1)/n (0.05^(-2/(n - 2)) - 1): not the
/// ellipse of confidence of the mean, and wider than that of chi-square where points are few.
/// (Schubert and Kirchner 2014; Chew 1966.) As many y as x, all finite; nothing below 3 points.
std::optional<PredictionEllipse> PredictionEllipse95(std::span<const double> x, std::span<const double> y);

}  // namespace velmora
