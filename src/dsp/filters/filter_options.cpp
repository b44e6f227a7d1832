#include "dsp/filters/filter_options.hpp"

namespace velmora {

bool IsBandOption(std::int32_t passOption) {
  return passOption == kBandPassOption || passOption == kBandStopOption;
}

Band BandOf(std::int32_t passOption) {
  switch (passOption) {
    case kHighPassOption:
      return Band::HighPass;
    case kBandPassOption:
      return Band::BandPass;
    case kBandStopOption:
      return Band::BandStop;
    default:
      return Band::LowPass;
  }
}

bool IsDesignByPasses(std::int32_t designOption) {
  return designOption == kCriticallyDampedOption || designOption == kBesselOption;
}

FilterDesign DesignByPassesOf(std::int32_t designOption) {
  switch (designOption) {
    case kCriticallyDampedOption:
      return FilterDesign::CriticallyDamped;
    case kBesselOption:
      return FilterDesign::Bessel;
    default:
      return FilterDesign::Butterworth;
  }
}

FilterDesign DesignOfThree(std::int32_t designOption) {
  switch (designOption) {
    case 1:
      return FilterDesign::CriticallyDamped;
    case 2:
      return FilterDesign::Bessel;
    default:
      return FilterDesign::Butterworth;
  }
}

Approximation ApproximationOf(std::int32_t designOption) {
  switch (designOption) {
    case kChebyshevOption:
      return Approximation::Chebyshev;
    case kEllipticOption:
      return Approximation::Elliptic;
    case kInverseChebyshevOption:
      return Approximation::InverseChebyshev;
    default:
      return Approximation::Butterworth;
  }
}

}  // namespace velmora
