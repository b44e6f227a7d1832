#include "spectra/sine_pattern.hpp"

#include "core/portable_sine.hpp"
#include "core/text/numbers.hpp"

namespace velmora {

void AddSine(const Sine& sine, std::span<float> samples) {
  const auto n = static_cast<double>(samples.size());
  const double phase = sine.phase * Pi / 180.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double angle = 2.0 * Pi * sine.cycles * static_cast<double>(i) / n + phase;
    const double value = sine.amplitude * SineAndCosineOf(angle).sine;
    samples[i] = static_cast<float>(samples[i] + value);
  }
}

}  // namespace velmora
