#include "dsp/filters/filter_section.hpp"

#include <cmath>
#include <limits>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

using Outcome = FilterVerdict::Outcome;

constexpr int kHighestSectionCount = std::numeric_limits<std::int16_t>::max();
constexpr int kHighestZeroLagPasses = kHighestSectionCount / 2;

// The low-pass filter divides by the correction; for Bessel in two divisions.
double LowPassAdjustment(FilterDesign design, int n) {
  if (design != FilterDesign::Bessel) {
    return 1 / CorrectionFactor(design, n);
  }
  return (1 / std::sqrt(std::sqrt(std::pow(2.0, 1.0 / n) - 0.75) - 0.5)) / std::sqrt(3.0);
}

// The bilinear transform; wc is the tangent of pi times the normalised cut-off.
template <typename Real>
SectionOf<Real> SectionAt(FilterDesign design, Real tangent) {
  const double wc = tangent;
  Real K1 = 0;
  Real K2 = 0;
  switch (design) {
    case FilterDesign::Butterworth:
      K1 = static_cast<Real>(std::sqrt(2.0) * wc);
      K2 = static_cast<Real>(wc * wc);
      break;
    case FilterDesign::CriticallyDamped:
      K1 = static_cast<Real>(wc + wc);
      K2 = static_cast<Real>(wc * wc);
      break;
    case FilterDesign::Bessel:
      K1 = static_cast<Real>(3 * wc);
      K2 = static_cast<Real>((wc * wc) * 3);
      break;
  }
  const double k1 = K1;
  const double k2 = K2;
  SectionOf<Real> section;
  section.a0 = static_cast<Real>(k2 / (1 + k1 + k2));
  const double a0 = section.a0;
  section.b1 = static_cast<Real>((a0 + a0) / k2 + a0 * -2.0);
  section.b2 = static_cast<Real>(1 - (a0 * 4 + double{section.b1}));
  return section;
}

template <typename Real>
bool IsFinite(const SectionOf<Real>& section) {
  return std::isfinite(section.a0 + section.b1 + section.b2);
}

void Refuse(FilterVerdict& verdict, Outcome outcome, double number, double limit) {
  verdict.outcome = outcome;
  verdict.number = number;
  verdict.limit = limit;
}

DesignedSection DesignLowPass(FilterDesign design, float cutoff, double rate, int n) {
  DesignedSection result{.verdict = {.cutoff = cutoff}};
  const auto adjustment = static_cast<float>(LowPassAdjustment(design, n));
  const auto adjusted = static_cast<float>(double{adjustment} * cutoff);
  const auto wc = static_cast<float>(std::tan((adjusted / rate) * Pi));
  if (static_cast<float>(rate / 2) < adjusted) {
    Refuse(result.verdict, Outcome::LowPassTooHigh, adjusted, (rate / 2) / adjustment);
    return result;
  }
  result.section = SectionAt(design, wc);
  return result;
}

DesignedSection DesignHighPass(FilterDesign design, float cutoff, double rate, int n) {
  DesignedSection result{.verdict = {.cutoff = cutoff}};
  const auto correction = static_cast<float>(CorrectionFactor(design, n));
  if (rate / cutoff > kHighestRateToCutoff) {
    result.verdict.lowestUseful = rate / kHighestRateToCutoff;
  }
  const auto mirrored = static_cast<float>(0.5 - (double{correction} * cutoff) / rate);
  const auto wc = static_cast<float>(std::tan(mirrored * Pi));
  // A fraction of the rate against a frequency: it only ever refuses at rates below 1 Hz, and stays.
  if (static_cast<float>(rate / 2) < mirrored) {
    Refuse(result.verdict, Outcome::HighPassAdjustedTooHigh, mirrored, (rate / 2) / correction);
    return result;
  }
  if (mirrored < 0) {
    Refuse(result.verdict, Outcome::HighPassTooHigh, mirrored, (rate / 2) / correction);
    return result;
  }
  result.section = SectionAt(design, wc);
  result.section.b1 = -result.section.b1;
  return result;
}

}  // namespace

double CorrectionFactor(FilterDesign design, int n) {
  switch (design) {
    case FilterDesign::Butterworth:
      return std::sqrt(std::sqrt(std::pow(2.0, 1.0 / n) - 1));
    case FilterDesign::CriticallyDamped:
      return std::sqrt(std::pow(2.0, 1.0 / (n * 2)) - 1);
    case FilterDesign::Bessel:
      break;
  }
  return std::sqrt(3.0) * std::sqrt(std::sqrt(std::pow(2.0, 1.0 / n) - 0.75) - 0.5);
}

DesignedSection DesignSection(PassType type, FilterDesign design, float cutoff, double rate,
                              std::int16_t passes, bool zeroLag) {
  DesignedSection result{.verdict = {.cutoff = cutoff}};
  const int n = zeroLag ? 2 * passes : passes;
  if (passes < 1) {
    Refuse(result.verdict, Outcome::TooFewPasses, passes, 1);
    return result;
  }
  if (n > kHighestSectionCount) {
    Refuse(result.verdict, Outcome::TooManyPasses, passes, kHighestZeroLagPasses);
    return result;
  }
  result = type == PassType::Low ? DesignLowPass(design, cutoff, rate, n)
                                 : DesignHighPass(design, cutoff, rate, n);
  if (result.verdict.Accepted() && !IsFinite(result.section)) {
    Refuse(result.verdict, Outcome::CutoffTooLow, cutoff, 0);
  }
  return result;
}

DesignedSectionOf<double> DesignForwardSection(PassType type, FilterDesign design, float cutoff, double rate,
                                               std::int16_t passes) {
  DesignedSectionOf<double> result{.verdict = {.cutoff = cutoff}};
  if (passes < 1) {
    Refuse(result.verdict, Outcome::TooFewPasses, passes, 1);
    return result;
  }
  const bool low = type == PassType::Low;
  const double correction = CorrectionFactor(design, passes);
  const auto frequency = static_cast<float>(low ? cutoff / correction : 0.5 - cutoff * correction / rate);
  if (low && frequency > rate / 2) {
    Refuse(result.verdict, Outcome::LowPassTooHigh, frequency, (rate / 2) / (1 / correction));
    return result;
  }
  result.section = SectionAt<double>(design, std::tan(low ? frequency * Pi / rate : frequency * Pi));
  if (!low) {
    result.section.b1 = -result.section.b1;
  }
  if (!IsFinite(result.section)) {
    const double limit = low ? 0.0 : (rate / 2) / correction;
    Refuse(result.verdict, low ? Outcome::CutoffTooLow : Outcome::HighPassTooHigh, frequency, limit);
  }
  return result;
}

}  // namespace velmora
