#include "forceplate/sway/sway_measures.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "dsp/math/mean_deviation.hpp"
#include "spectra/auto_power_spectrum.hpp"
#include "spectra/windows.hpp"

namespace velmora {
namespace {

std::vector<double> Centred(std::span<const double> samples) {
  const double mean = MeanOf(samples);
  std::vector<double> centred(samples.begin(), samples.end());
  for (double& value : centred) {
    value -= mean;
  }
  return centred;
}

/// Power by line of frequency, `step` Hz apart.
struct Spectrum {
  std::vector<double> power;
  double step = 0.0;
};

Spectrum WelchSpectrum(std::span<const double> samples, double rate) {
  const std::size_t length = samples.size() / 2;
  const std::size_t stride = length - samples.size() / 4;
  constexpr std::size_t kHann = 6;
  static_assert(kSpectralWindows[kHann].name == "Hanning");
  const std::vector<double> weights =
      WindowWeights(kSpectralWindows[kHann], static_cast<std::int64_t>(length));
  Spectrum spectrum{.power = std::vector<double>(length / 2 + 1), .step = rate / static_cast<double>(length)};
  AutoPowerSpectrum transform;
  for (std::size_t begin = 0; begin + length <= samples.size(); begin += stride) {
    const auto segment = samples.subspan(begin, length);
    const double mean = MeanOf(segment);
    const std::span<double> weighted = transform.Samples(length);
    for (std::size_t i = 0; i < length; ++i) {
      weighted[i] = (segment[i] - mean) * weights[i];
    }
    const std::span<const double> power = transform.Take();
    for (std::size_t j = 0; j < power.size(); ++j) {
      spectrum.power[j] += power[j];
    }
  }
  return spectrum;
}

// The trapezoids' width is in both integrals.
std::optional<double> MeanFrequencyOf(const Spectrum& spectrum) {
  double weighted = 0.0;
  double area = 0.0;
  for (std::size_t j = 1; j < spectrum.power.size(); ++j) {
    const double before = static_cast<double>(j - 1) * spectrum.step;
    const double here = static_cast<double>(j) * spectrum.step;
    weighted += (before * spectrum.power[j - 1] + here * spectrum.power[j]) / 2;
    area += (spectrum.power[j - 1] + spectrum.power[j]) / 2;
  }
  return area > 0 ? std::optional(weighted / area) : std::nullopt;
}

double TotalOf(const Spectrum& spectrum) {
  double total = 0.0;
  for (const double power : spectrum.power) {
    total += power;
  }
  return total;
}

/// Distances from the mean, and steps from sample to sample, of one direction or of both.
SwayMeasures MeasuresOf(std::span<const double> distances, std::span<const double> steps, double time,
                        double velocityPerFrequency) {
  SwayMeasures of;
  double squares = 0.0;
  for (const double distance : distances) {
    squares += distance * distance;
  }
  of.meanDistance = MeanOf(distances);
  of.rmsDistance = std::sqrt(squares / static_cast<double>(distances.size()));
  for (const double step : steps) {
    of.pathLength += step;
  }
  of.meanVelocity = of.pathLength / time;
  if (of.meanDistance > 0) {
    of.meanFrequency = of.meanVelocity / (velocityPerFrequency * of.meanDistance);
  }
  return of;
}

SwayMeasures DirectionOf(const std::vector<double>& centred, double mean, double time) {
  std::vector<double> distances;
  std::vector<double> steps;
  for (std::size_t i = 0; i < centred.size(); ++i) {
    distances.push_back(std::abs(centred[i]));
    if (i > 0) {
      steps.push_back(std::abs(centred[i] - centred[i - 1]));
    }
  }
  SwayMeasures of = MeasuresOf(distances, steps, time, 4 * std::numbers::sqrt2);
  const auto [low, high] = std::minmax_element(centred.begin(), centred.end());
  of.meanPosition = mean;
  of.range = *high - *low;
  return of;
}

SwayMeasures BothOf(const std::vector<double>& x, const std::vector<double>& y, double time) {
  std::vector<double> distances;
  std::vector<double> steps;
  for (std::size_t i = 0; i < x.size(); ++i) {
    distances.push_back(std::hypot(x[i], y[i]));
    if (i > 0) {
      steps.push_back(std::hypot(x[i] - x[i - 1], y[i] - y[i - 1]));
    }
  }
  return MeasuresOf(distances, steps, time, 2 * std::numbers::pi);
}

}  // namespace

Sway SwayOf(std::span<const double> ml, std::span<const double> ap, double rate) {
  const double time = static_cast<double>(ml.size()) / rate;
  const std::vector<double> x = Centred(ml);
  const std::vector<double> y = Centred(ap);
  Sway sway{.direction = {DirectionOf(x, MeanOf(ml), time), DirectionOf(y, MeanOf(ap), time)},
            .both = BothOf(x, y, time)};
  double swept = 0.0;
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    swept += std::abs(x[i + 1] * y[i] - x[i] * y[i + 1]);
  }
  sway.areaPerSecond = swept / (2 * time);
  sway.ellipse = PredictionEllipse95(ml, ap);
  const std::array spectra = {WelchSpectrum(x, rate), WelchSpectrum(y, rate)};
  double weighted = 0.0;
  double total = 0.0;
  for (std::size_t d = 0; d < spectra.size(); ++d) {
    const std::optional<double> mean = MeanFrequencyOf(spectra.at(d));
    sway.direction.at(d).spectralMeanFrequency = mean;
    weighted += mean.value_or(0.0) * TotalOf(spectra.at(d));
    total += TotalOf(spectra.at(d));
  }
  if (total > 0) {
    sway.both.spectralMeanFrequency = weighted / total;
  }
  return sway;
}

void RemoveLine(std::span<double> samples) {
  const double middle = (static_cast<double>(samples.size()) - 1) / 2;
  double products = 0.0;
  double squares = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double at = static_cast<double>(i) - middle;
    products += at * samples[i];
    squares += at * at;
  }
  const double slope = squares > 0 ? products / squares : 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] -= slope * (static_cast<double>(i) - middle);
  }
}

}  // namespace velmora
