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

/// What a section keeps from one sample to the next.
struct SectionState {
  double s1 = 0.0;
  double s2 = 0.0;
};

/// What the sections make of the next sample, one after the other; a state each. Transposed direct form II
/// (Oppenheim and Schafer, Discrete-Time Signal Processing, 6.3.4).
inline double NextOutput(const Biquads& sections, std::vector<SectionState>& states, double value) {
  for (std::size_t k = 0; k < sections.size(); ++k) {
    const Biquad& c = sections[k];
    SectionState& s = states[k];
    const double y = c.b0 * value + s.s1;
    s.s1 = c.b1 * value - c.a1 * y + s.s2;
    s.s2 = c.b2 * value - c.a2 * y;
    value = y;
  }
  return value;
}

/// Filters x in place from rest, forward, in 64 bits; each output is rounded to 32 bits once.
void RunBiquads(const Biquads& sections, const ChannelView& x);

}  // namespace velmora
