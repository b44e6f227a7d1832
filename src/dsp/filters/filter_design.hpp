#pragma once

#include <stdexcept>

#include "dsp/filters/biquads.hpp"
#include "dsp/filters/filter_prototype.hpp"

namespace velmora {

enum class Band { LowPass, HighPass, BandPass, BandStop };

inline constexpr int kHighestDesignOrder = 20;
inline constexpr double kRippleDb = 0.5;
inline constexpr double kAttenuationDb = 40.0;

/// A digital filter asked for. Frequencies in Hz; `higher` counts for the two bands alone, whose filters
/// have twice the order given.
struct DesignRequest {
  Approximation approximation = Approximation::Butterworth;
  Band band = Band::LowPass;
  int order = 2;  // 1 to kHighestDesignOrder
  double rate = 0.0;
  double cutoff = 0.0;  // the lower one of a band
  double higher = 0.0;
  double rippleDb = kRippleDb;            // of Chebyshev and elliptic pass bands
  double attenuationDb = kAttenuationDb;  // of inverse Chebyshev and elliptic stop bands
};

/// A filter that cannot be built; what() is one sentence that says why.
class FilterDesignError : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// Poles and zeros of the analog prototype, moved to the band and then to the unit circle by the bilinear
/// transformation with the edges warped beforehand, in second-order sections of 64-bit coefficients. The
/// sections are stable, and the gain at the edges is what was asked for; a filter for which that cannot be
/// had in 64 bits is refused. Throws FilterDesignError.
Biquads DesignFilter(const DesignRequest& request);

/// Whether a band has a higher edge too.
bool IsBand(Band band);

/// Throws FilterDesignError unless the edges lie above 0 and below half the rate, the lower below the higher.
void CheckEdges(Band band, double rate, double cutoff, double higher);

}  // namespace velmora
