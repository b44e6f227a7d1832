#pragma once

#include <complex>
#include <vector>

#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// y(i) = b0 x(i) + b1 x(i-1) + b2 x(i-2) - a1 y(i-1) - a2 y(i-2)
struct Biquad {
  double b0 = 1.0;
  double b1 = 0.0;
  double b2 = 0.0;
  double a1 = 0.0;
  double a2 = 0.0;
};

/// A filter as second-order sections, one after the other.
using Biquads = std::vector<Biquad>;

/// Of one section, or of all together, at z^-1.
std::complex<double> Response(const Biquad& section, std::complex<double> inverseZ);
std::complex<double> Response(const Biquads& sections, std::complex<double> inverseZ);

/// Gain and phase of the sections together at a frequency in Hz.
std::complex<double> ResponseAt(const Biquads& sections, double frequency, double rate);

/// Whether the poles lie inside the unit circle.
bool IsStable(const Biquad& section);

/// Filters x in place from rest, forward, in 64 bits; each output is rounded to 32 bits once.
void RunBiquads(const Biquads& sections, const ChannelView& x);

}  // namespace velmora
