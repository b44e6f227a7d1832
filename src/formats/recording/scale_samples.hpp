#pragma once

#include <cstdint>

#include "core/simd.hpp"

namespace velmora {

/// Frames of channels side by side: out[c] = ((word[c] + offset[c]) * gain[c]) * general, in 64 bits in this
/// order, rounded to 32 once. Frames lie `wordStride` bytes apart, results `outStride` floats. Every level
/// gives the same bits.
template <typename Word>
struct FramesToScale {
  const char* words = nullptr;
  std::int64_t wordStride = 0;
  std::int64_t frames = 0;
  int channels = 0;
  const double* offset = nullptr;
  const double* gain = nullptr;
  double general = 1.0;
  float* out = nullptr;
  std::int64_t outStride = 0;
};

void ScaleFrames(const FramesToScale<std::int16_t>& job, SimdLevel level = MachineSimdLevel());
void ScaleFrames(const FramesToScale<std::uint16_t>& job, SimdLevel level = MachineSimdLevel());
void ScaleFrames(const FramesToScale<float>& job, SimdLevel level = MachineSimdLevel());
void ScaleFrames(const FramesToScale<double>& job, SimdLevel level = MachineSimdLevel());

/// Samples of one channel: out[i] = (count[i] + offset) * gain, likewise. Returns how many counts are at a
/// limit of the converter or beyond it.
struct RunToScale {
  const char* counts = nullptr;  // of 16 bits, low byte first
  std::int64_t samples = 0;
  double offset = 0.0;
  double gain = 1.0;
  std::int32_t lowest = 0;
  std::int32_t highest = 0;
  float* out = nullptr;
};

std::int64_t ScaleRun(const RunToScale& job, SimdLevel level = MachineSimdLevel());

/// Whether all are numbers, and none infinite.
bool AreFinite(const float* values, std::int64_t count, SimdLevel level = MachineSimdLevel());

}  // namespace velmora
