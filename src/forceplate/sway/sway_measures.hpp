#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "dsp/math/prediction_ellipse.hpp"

namespace velmora {

/// Of one direction, or of both together; lengths in the units of the path, about its mean. Nothing where
/// there is nothing to divide by, or the measure is none of both.
struct SwayMeasures {
  std::optional<double> meanPosition{};
  double meanDistance = 0.0;
  double rmsDistance = 0.0;
  std::optional<double> range{};
  double pathLength = 0.0;
  double meanVelocity = 0.0;                      // units/s
  std::optional<double> meanFrequency{};          // Hz, of a sine or circle so large and so fast
  std::optional<double> spectralMeanFrequency{};  // Hz
};

/// The sway of a centre of pressure. (Prieto 1996, IEEE Trans. Biomed. Eng. 43, 956; the ellipse as in
/// Schubert and Kirchner 2014, Gait Posture 39, 518.)
struct Sway {
  std::array<SwayMeasures, 2> direction;  // medio-lateral, antero-posterior
  SwayMeasures both;
  double areaPerSecond = 0.0;  // swept about the mean, units^2/s
  std::optional<PredictionEllipse> ellipse{};
};

/// Of positions at `rate` Hz, at least 5 and as many of each. The spectra are Welch's: Hann, segments of half
/// the samples that share half of theirs, the mean of each removed.
Sway SwayOf(std::span<const double> ml, std::span<const double> ap, double rate);

/// Takes the straight line through the samples off, and leaves the mean.
void RemoveLine(std::span<double> samples);

}  // namespace velmora
