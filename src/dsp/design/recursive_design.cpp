#include "dsp/design/recursive_design.hpp"

#include <cmath>

#include "core/text/numbers.hpp"

namespace velmora {

// The two edges of a band keep their product, which is the square of its middle.
DesignRequest KeptOverBothRuns(const DesignRequest& butterworth) {
  DesignRequest kept = butterworth;
  const double rate = butterworth.rate;
  const double factor = std::pow(std::sqrt(2.0) - 1, 1 / (2.0 * butterworth.order));
  const auto warp = [rate](double frequency) { return std::tan(Pi * frequency / rate); };
  const auto back = [rate](double w) { return rate * std::atan(w) / Pi; };
  const double low = warp(butterworth.cutoff);
  if (!IsBand(butterworth.band)) {
    kept.cutoff = back(butterworth.band == Band::LowPass ? low / factor : low * factor);
    return kept;
  }
  const double high = warp(butterworth.higher);
  const double width = butterworth.band == Band::BandPass ? (high - low) / factor : (high - low) * factor;
  const double half = width / 2;
  const double root = std::sqrt(half * half + low * high);
  kept.higher = back(root + half);
  kept.cutoff = back(low * high / (root + half));
  return kept;
}

Biquads DesignNotch(const NotchRequest& request) {
  CheckEdges(Band::LowPass, request.rate, request.frequency, 0);
  if (!(request.width > 0 && request.width < request.rate / 2)) {
    throw FilterDesignError("The width of the notch must lie above 0 and below half the sampling rate.");
  }
  double beta = std::tan(Pi * request.width / request.rate);
  if (request.keptOverBothRuns) {
    beta *= std::sqrt(std::sqrt(2.0) - 1);
  }
  const double g = 1 / (1 + beta);
  Biquads sections;
  for (std::int32_t k = 1; k <= request.harmonics + 1 && k * request.frequency < request.rate / 2; ++k) {
    const double cosine = std::cos(2 * Pi * k * request.frequency / request.rate);
    sections.push_back({g, -2 * g * cosine, g, -2 * g * cosine, 2 * g - 1});
  }
  return sections;
}

}  // namespace velmora
