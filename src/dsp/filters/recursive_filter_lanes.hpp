#pragma once

#include <cstdint>

#include "core/simd.hpp"
#include "core/trial/trial.hpp"
#include "dsp/filters/filter_section.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// One filter run over a trial: the same pass type, design and padding for all channels, the rest by
/// channel 1..NChan. A cut-off of 0 or below leaves a channel alone.
struct ChannelsFilter {
  PassType type = PassType::Low;
  FilterDesign design = FilterDesign::Butterworth;
  std::int32_t Padding = 0;  // as in FilterSettings
  bool PadZeros = false;
  bool Rectify = false;  // low-pass Butterworth and critically damped only
  PerChannel<float> Cutoffs{};
  PerChannel<std::int16_t> Passes{};
  ChannelFlags ZeroLag{};
};

/// Filters whole channels, all at once where they lie side by side in memory: bit for bit what the
/// routines of recursive_filter.hpp make of each channel alone. The verdict of a channel left alone is
/// Accepted. `level` is for tests; it must be one the machine has.
PerChannel<FilterVerdict> FilterChannels(Trial& trial, const ChannelsFilter& filter,
                                         SimdLevel level = MachineSimdLevel(), const Turn& turn = {});

}  // namespace velmora
