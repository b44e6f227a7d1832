#pragma once

#include <cstdint>
#include <vector>

namespace velmora {

/// In the order of the dialogue's list.
enum class WaveShape : std::int32_t {
  Constant,
  Sine,
  Square,
  Triangle,
  Sawtooth,
  Pulse,
  HalfSine,
  Haversine,
  Ramp,
  Chirp,
  UniformNoise,
  GaussianNoise,
};

struct Waveform {
  WaveShape shape = WaveShape::Sine;
  double amplitude = 1.0;
  double offset = 0.0;         // added last
  double frequency = 1.0;      // Hz
  double endFrequency = 10.0;  // Hz, of a chirp at the last sample
  double phase = 0.0;          // degrees
  double duty = 50.0;          // %, of a square or triangle
  double start = 0.0;          // s, of a pulse or ramp
  double width = 1.0;          // s
  std::uint32_t seed = 1;      // of noise, begun anew each time
};

/// Adds the waveform to `sum`, sample i (from 0) at i / rate seconds.
void AddWaveform(const Waveform& wave, double rate, std::vector<double>& sum);

}  // namespace velmora
