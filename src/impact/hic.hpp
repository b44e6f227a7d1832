#pragma once

#include <cstdint>
#include <span>

#include "core/simd.hpp"

namespace velmora {

/// The Head Injury Criterion over windows of one length (Versace 1971, SAE 710881): the largest of
/// T * (mean acceleration)^2.5. Windows shorter than T are not tried.
struct Hic {
  float value = 0.0F;             // 0 when no window has a total above 0
  std::int64_t start = 0;         // first sample of the window, from 1; 0: none
  float spanMilliseconds = 0.0F;  // T * 1000
};

/// A window of `span` milliseconds in samples, at least 1.
std::int64_t HicWindow(double span, double rate);

/// `a` holds accelerations in g, `window` counts samples and is held to a.size(), `timeStep` is in seconds.
/// Each window's total is added from its first sample on in 32 bits; the first of equal windows counts.
/// An empty `a` gives no value.
Hic FindHic(std::span<const float> a, std::int64_t window, double timeStep,
            SimdLevel level = MachineSimdLevel());

/// The same, window after window: what FindHic is held to, bit for bit.
Hic FindHicPlain(std::span<const float> a, std::int64_t window, double timeStep);

}  // namespace velmora
