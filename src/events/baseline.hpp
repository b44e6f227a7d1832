#pragma once

#include "core/simd.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

/// Of the channels over a region at rest, in their units; index 0 is not used.
struct Baseline {
  PerChannel<double> mean{};
  PerChannel<double> deviation{};
};

/// Channels 1 to NChan over samples lo to hi (from 1, within the trial): with s the sum of the samples, q
/// that of their squares and n their number, mean s/n and deviation sqrt((q - s*s/n)/(n - 1)). One pass, so
/// rounding may leave a variance below 0, which counts as 0. A region of one sample has no deviation: NaN, as
/// has a region with a sample that is NaN.
///
/// Channels lie side by side in the lanes of a vector and each sum keeps its order: the bits are those of
/// TakeBaselinePlain.
Baseline TakeBaseline(const Trial& trial, SampleRange region, SimdLevel level = MachineSimdLevel());

/// Channel by channel, sample by sample.
Baseline TakeBaselinePlain(const Trial& trial, SampleRange region);

}  // namespace velmora
