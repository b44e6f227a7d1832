#pragma once

#include <span>

#include "core/simd.hpp"

namespace velmora {

struct Harmonic {
  double frequency = 0.0;  // Hz
  double cosine = 0.0;     // in the units of the signal
  double sine = 0.0;
};

/// Adds one harmonic to samples `step` seconds apart, the first at 0; each sum is rounded to single
/// precision. Every level gives the same bits.
void AddHarmonic(const Harmonic& harmonic, double step, std::span<float> samples,
                 SimdLevel level = MachineSimdLevel());

}  // namespace velmora
