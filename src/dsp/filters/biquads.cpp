#include "dsp/filters/biquads.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/text/numbers.hpp"

namespace velmora {

std::complex<double> Response(const Biquad& section, std::complex<double> inverseZ) {
  const auto polynomial = [inverseZ](double c0, double c1, double c2) {
    return c0 + inverseZ * (c1 + inverseZ * c2);
  };
  return polynomial(section.b0, section.b1, section.b2) / polynomial(1.0, section.a1, section.a2);
}

std::complex<double> Response(const Biquads& sections, std::complex<double> inverseZ) {
  std::complex<double> response = 1.0;
  for (const Biquad& section : sections) {
    response *= Response(section, inverseZ);
  }
  return response;
}

std::complex<double> ResponseAt(const Biquads& sections, double frequency, double rate) {
  return Response(sections, std::polar(1.0, -2 * Pi * frequency / rate));
}

// The triangle of stability (Oppenheim and Schafer, Discrete-Time Signal Processing, 5.2).
bool IsStable(const Biquad& section) {
  return std::abs(section.a2) < 1 && std::abs(section.a1) < 1 + section.a2;
}

void RunBiquads(const Biquads& sections, const ChannelView& x) {
  std::vector<SectionState> states(sections.size());
  for (std::int64_t i = 0; i < x.size(); ++i) {
    x[i] = static_cast<float>(NextOutput(sections, states, x[i]));
  }
}

}  // namespace velmora
