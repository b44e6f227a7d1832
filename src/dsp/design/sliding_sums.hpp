#pragma once

#include <cstdint>
#include <span>

#include "core/simd.hpp"

namespace velmora {

// Sums over windows that move on by one sample. Each window's additions are done in full and in its own
// order, from 0.0; neighbouring windows go side by side in vectors of the level given, with the bits of the
// plain loop.

/// y(o) = sum of taps(k) x(o + m - 1 - k) for o = 0 .. outputs - 1, k ascending over the m taps; x has
/// outputs + m - 1 samples.
void SumTaps(const double* x, std::span<const double> taps, std::int64_t outputs, double* y,
             SimdLevel level = MachineSimdLevel());

/// y(o) = x(o) + x(o+1) + ... + x(o + width - 1), added in this order; x has outputs + width - 1 samples.
void SumWindows(const double* x, std::int64_t width, std::int64_t outputs, double* y,
                SimdLevel level = MachineSimdLevel());

/// One window of each.
double SumTapsPlain(const double* x, std::span<const double> taps);
double SumWindowPlain(const double* x, std::int64_t width);

}  // namespace velmora
