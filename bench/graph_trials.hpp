#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"

namespace velmora {

inline constexpr double kGraphRate = 1000.0;

/// What is drawn; stacked: every channel in a range of its own.
struct Shape {
  int channels;
  std::int64_t samples;
  bool stacked;
  friend bool operator==(const Shape&, const Shape&) = default;
};

// A slow wave, noise, and rare peaks. One trial at a time: the large ones take 360 MB.
inline Trial& TrialOf(const Shape& shape) {
  static Trial trial;
  static Shape made{0, 0, false};
  if (made == shape) {
    return trial;
  }
  made = shape;
  trial.Rate = kGraphRate;
  trial.AllocateData(shape.channels, shape.samples);
  trial.Duration = static_cast<double>(shape.samples - 1) / kGraphRate;
  trial.RebuildTimeColumn();
  std::uint32_t random = 1;
  for (std::int64_t i = 1; i <= shape.samples; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (int c = 1; c <= shape.channels; ++c) {
      random = random * 1664525U + 1013904223U;
      const float noise = static_cast<float>(random >> 8) / 0x1p24F - 0.5F;
      const float wave = static_cast<float>((i * (c + 3)) % 100'000) / 100'000.0F - 0.5F;
      const float peak = random % 5000 == 0 ? 0.8F : 0.3F;
      frame[c] = wave * 0.2F + noise * peak + (shape.stacked ? static_cast<float>(c) : 0.0F);
    }
  }
  return trial;
}

}  // namespace velmora
