#pragma once

#include <cstdint>

#include "core/trial/sample_matrix.hpp"

namespace velmora {

// What passes over a matrix cost that compute nothing: operations are compared with them.

using FourSamples = float __attribute__((vector_size(16), aligned(4)));

/// Reads the frames 1 to `samples`. The result wants benchmark::DoNotOptimize.
inline FourSamples ReadMatrix(const SampleMatrix& matrix, std::int64_t samples) {
  const float* x = matrix.Frame(1);
  const std::int64_t count = matrix.Stride() * samples;
  FourSamples sum[4] = {};
  for (std::int64_t k = 0; k + 16 <= count; k += 16) {
    for (int v = 0; v < 4; ++v) {
      sum[v] += *reinterpret_cast<const FourSamples*>(x + k + 4 * v);
    }
  }
  return sum[0] + sum[1] + sum[2] + sum[3];
}

/// Reads and writes them. Wants benchmark::ClobberMemory.
inline void NegateInPlace(SampleMatrix& matrix, std::int64_t samples) {
  float* x = matrix.Frame(1);
  const std::int64_t count = matrix.Stride() * samples;
  for (std::int64_t k = 0; k + 4 <= count; k += 4) {
    auto* four = reinterpret_cast<FourSamples*>(x + k);
    *four = -*four;
  }
}

}  // namespace velmora
