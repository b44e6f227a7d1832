#pragma once

#include <cstdint>
#include <span>

#include "core/simd.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// The Head Injury Criterion as standards define it (Versace 1971, SAE 710881; FMVSS 208): over all pairs of
/// samples up to a limit apart, the largest (t2 - t1) (mean acceleration between them)^2.5.
struct HicOverPairs {
  double value = 0.0;      // 0: no pair has an acceleration between its samples
  std::int64_t first = 0;  // the pair, from 0; the earliest of equal ones, then the closest
  std::int64_t last = 0;
};

/// `r` holds accelerations in g, finite and not below 0, `longest` counts sample intervals (at least 1),
/// `timeStep` is in seconds. The integral between two samples is that of the cumulative trapezoids, in 64
/// bits.
///
/// For every distance the criterion rises with the integral, so the starts of a block go side by side in
/// vectors of the level given and give the largest integral of each distance alone; the value and the pair
/// are those of the plain loop, bit for bit.
HicOverPairs FindHicOverPairs(std::span<const double> r, std::int64_t longest, double timeStep,
                              SimdLevel level = MachineSimdLevel(), const Turn& turn = {});

/// Pair after pair.
HicOverPairs FindHicOverPairsPlain(std::span<const double> r, std::int64_t longest, double timeStep);

}  // namespace velmora
