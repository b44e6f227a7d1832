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

// Transposed direct form II (Oppenheim and Schafer, Discrete-Time Signal Processing, 6.3.4).
void RunBiquads(const Biquads& sections, const ChannelView& x) {
  struct State {
    double first = 0.0;
    double second = 0.0;
  };
  std::vector<State> states(sections.size());
  for (std::int64_t i = 0; i < x.size(); ++i) {
    double value = x[i];
    for (std::size_t k = 0; k < sections.size(); ++k) {
      const Biquad& section = sections[k];
      State& state = states[k];
      const double output = section.b0 * value + state.first;
      state.first = section.b1 * value - section.a1 * output + state.second;
      state.second = section.b2 * value - section.a2 * output;
      value = output;
    }
    x[i] = static_cast<float>(value);
  }
}

}  // namespace velmora
