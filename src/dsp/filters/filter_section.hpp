#pragma once

#include <cstdint>
#include <optional>

namespace velmora {

enum class PassType { Low, High };
enum class FilterDesign { Butterworth, CriticallyDamped, Bessel };

/// Rate / Cutoff above which a high-pass filter may have no effect in 32-bit samples.
inline constexpr double kHighestRateToCutoff = 14597;

/// A second-order recursive section, x the input and y the output:
///   low-pass   y(i) = a0 (x(i) + 2 x(i-1) + x(i-2)) + b1 y(i-1) + b2 y(i-2)
///   high-pass  y(i) = a0 (x(i) - 2 x(i-1) + x(i-2)) + b1 y(i-1) + b2 y(i-2)
template <typename Real>
struct SectionOf {
  Real a0 = 0;
  Real b1 = 0;
  Real b2 = 0;
};
using FilterSection = SectionOf<float>;

inline SectionOf<double> InDoubles(const FilterSection& section) {
  return {section.a0, section.b1, section.b2};
}

/// Whether a filter can be built, and what to tell the user when it cannot.
struct FilterVerdict {
  enum class Outcome {
    Accepted,
    TooFewPasses,
    TooManyPasses,
    LowPassTooHigh,  // the adjusted cut-off lies above half the sampling rate
    HighPassAdjustedTooHigh,
    HighPassTooHigh,
    CutoffTooLow,  // coefficients that 32 bits cannot hold
  };

  Outcome outcome = Outcome::Accepted;
  float cutoff = 0.0F;  // Hz, as asked for
  double number = 0.0;  // what was too high or too low
  double limit = 0.0;   // the highest or lowest that passes
  /// Hz; set when a high-pass cut-off is so low that it may have no effect. Filtering goes on.
  std::optional<double> lowestUseful;

  [[nodiscard]] bool Accepted() const { return outcome == Outcome::Accepted; }
};

template <typename Real>
struct DesignedSectionOf {
  SectionOf<Real> section;
  FilterVerdict verdict;
};
using DesignedSection = DesignedSectionOf<float>;

/// What a cascade of n sections does to the -3 dB frequency of one: the cut-off of each is divided by
/// this for a low-pass and multiplied for a high-pass cascade. n at least 1; a zero-lag filter runs
/// each section twice. (Butterworth: Winter, Biomechanics and Motor Control of Human Movement, 2.2.4.4.)
double CorrectionFactor(FilterDesign design, int n);

/// The section that, run `passes` times (each time forward and backward with zero lag), has its -3 dB
/// point at `cutoff` Hz. The high-pass filter is a low-pass design at the mirrored frequency. All
/// coefficients are rounded to 32 bits where they are assigned. `rate` in Hz.
DesignedSection DesignSection(PassType type, FilterDesign design, float cutoff, double rate,
                              std::int16_t passes, bool zeroLag);

/// The simpler design of the filters that only run forward: coefficients in 64 bits, of which only the
/// adjusted cut-off (low-pass) or mirrored frequency (high-pass) is rounded to 32. A high-pass cut-off is
/// not held to half the sampling rate, beyond which the filter grows without bound.
DesignedSectionOf<double> DesignForwardSection(PassType type, FilterDesign design, float cutoff, double rate,
                                               std::int16_t passes);

}  // namespace velmora
