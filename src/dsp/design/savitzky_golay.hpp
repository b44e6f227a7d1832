#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/simd.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// A polynomial by least squares over each window of neighbouring samples, or its derivative, at the window's
/// middle. (Savitzky and Golay 1964.)
struct SavitzkyGolay {
  std::int32_t points = 11;     // odd, above `polynomial`
  std::int32_t polynomial = 3;  // 0 to 10
  std::int32_t derivative = 0;  // 0 to 2
  double rate = 1.0;            // Hz; a derivative is one over time
  /// Weights of the window's samples, first to last, for the value at each of its places, first to last.
  std::vector<std::vector<double>> weights;
};

/// Fills in the weights. Throws FilterDesignError.
SavitzkyGolay DesignSavitzkyGolay(std::int32_t points, std::int32_t polynomial, std::int32_t derivative,
                                  double rate);

/// Whole channels, in place, of at least `points` samples: the first and last half window lie on the
/// polynomial of the first and last window. In 64 bits, rounded once; the same bits at every level as the
/// plain form.
void RunSavitzkyGolay(Trial& trial, const ChannelList& channels, const SavitzkyGolay& filter,
                      SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
void RunSavitzkyGolayPlain(std::span<double> x, const SavitzkyGolay& filter);

}  // namespace velmora
