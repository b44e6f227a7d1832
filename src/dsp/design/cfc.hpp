#pragma once

#include <array>
#include <span>

namespace velmora {

/// The channel frequency classes of impact tests.
inline constexpr std::array kCfcClasses = {60, 180, 600, 1000};
/// The standard asks for a sampling rate of so many times the class.
inline constexpr double kCfcRateToClass = 10;

/// y(i) = a0 x(i) + a1 x(i-1) + a2 x(i-2) + b1 y(i-1) + b2 y(i-2)
struct CfcSection {
  double a0 = 0.0;
  double a1 = 0.0;
  double a2 = 0.0;
  double b1 = 0.0;
  double b2 = 0.0;
  double rate = 0.0;  // Hz
};

/// The filter of a class at a rate in Hz; after both runs its -3 dB point lies near class/0.6 Hz. (SAE
/// J211-1, ISO 6487.) Throws FilterDesignError when class * 2.0775 does not lie below half the rate.
CfcSection DesignCfc(double frequencyClass, double rate);

/// Forward and backward in place, in 64 bits, over the signal continued by reflection by 10 ms; the first two
/// results of each run equal its samples.
void RunCfc(std::span<double> x, const CfcSection& section);

}  // namespace velmora
