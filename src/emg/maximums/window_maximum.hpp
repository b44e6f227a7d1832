#pragma once

#include <cstdint>
#include <vector>

#include "core/simd.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// What of a window is to be largest, as the dialogue numbers it.
enum class MaximumMethod : std::int32_t { LargestAbsolute, MeanAbsolute, Rms, Mean };

struct MaximumRule {
  std::int32_t width = 1;  // samples, from 1 to the range's length
  MaximumMethod method = MaximumMethod::MeanAbsolute;
};

struct WindowMaximum {
  double value = 0.0;
  std::int32_t first = 0;  // the first sample of its window, from 1
};

/// The window within the range that has the largest value, the first of equals; of single
/// samples for LargestAbsolute. Every full window counts, the last too. Sums are in 64 bits, in full and in
/// ascending order for each window; the fast form has the bits of the plain one. Samples are
/// numbers.
WindowMaximum FindWindowMaximum(Trial& trial, int channel, SampleRange range, const MaximumRule& rule,
                                SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
WindowMaximum FindWindowMaximumPlain(Trial& trial, int channel, SampleRange range, const MaximumRule& rule);

}  // namespace velmora
