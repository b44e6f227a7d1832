#pragma once

#include <algorithm>
#include <cstdint>

#include "dsp/turn.hpp"

namespace velmora {

/// Runs `body(first, samples)` over samples 1 to nData, and gives a turn at every hundredth.
template <typename Body>
void InStretches(std::int64_t nData, const Turn& turn, const Body& body) {
  constexpr std::int64_t kStretch = 100;
  for (std::int64_t first = 1; first <= nData; first += kStretch) {
    const std::int64_t samples = std::min(kStretch, nData - first + 1);
    body(first, samples);
    if (samples == kStretch) {
      Give(turn);
    }
  }
}

}  // namespace velmora
