#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "core/simd.hpp"

namespace velmora {

/// Told how many harmonics are done; false ends the work.
using HarmonicsDone = std::function<bool(std::int32_t done)>;

/// Fourier coefficients of the N samples x by the recurrence of Goertzel (1958, Amer. Math. Monthly 65, 34),
/// in O(N) for each harmonic with one sine and one cosine in all. `cosines` and `sines` have subscripts from
/// 0 to the number of harmonics; 0 is left alone. Harmonics run side by side, each in its own order of
/// operations: every level gives the same bits. Returns false when `done` ended it; the harmonics behind are
/// left as they were.
bool FourierCoefficients(std::span<const double> x, std::span<double> cosines, std::span<double> sines,
                         const HarmonicsDone& done = {}, SimdLevel level = MachineSimdLevel());

/// The same harmonic by harmonic: what the levels are held to.
bool FourierCoefficientsPlainly(std::span<const double> x, std::span<double> cosines, std::span<double> sines,
                                const HarmonicsDone& done = {});

}  // namespace velmora
