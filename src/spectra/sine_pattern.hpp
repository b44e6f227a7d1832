#pragma once

#include <cstdint>
#include <span>

namespace velmora {

/// A sine: amplitude in units of the signal, phase in degrees, cycles over the whole pattern.
struct Sine {
  double amplitude = 1.0;
  double phase = 0.0;
  double cycles = 1.0;
};

/// Adds amplitude sin(2 pi cycles i / n + phase), i = 0 to n-1, to n samples; each sum is rounded to single
/// precision.
void AddSine(const Sine& sine, std::span<float> samples);

}  // namespace velmora
