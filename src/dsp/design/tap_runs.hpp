#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/simd.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/design/section_runs.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// The weighted sum of neighbouring samples, one weight a sample, of odd number and below twice the number of
/// samples: y(i) = sum of taps(k) x(i + middle - k) without delay, k ascending, or of taps(k) x(i - k)
/// forward.
struct TapFilter {
  std::vector<double> taps;

  [[nodiscard]] std::int64_t Half() const { return (static_cast<std::int64_t>(taps.size()) - 1) / 2; }
};

/// Runs taps over whole channels in 64 bits; each result is rounded to 32 bits once. Without delay the
/// channel goes on by reflection at its ends, forward its first sample stands in front.
///
/// Several results are worked out side by side in vectors of the level given, with the bits of the plain
/// form.
void RunTaps(Trial& trial, const ChannelList& channels, const TapFilter& filter, RunDirection direction,
             SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
void RunTapsPlain(std::span<double> x, const TapFilter& filter, RunDirection direction);

}  // namespace velmora
