#pragma once

#include <cstdint>

#include "dsp/channel_list.hpp"

namespace velmora {

/// Replaces samples first+1 to last of each channel by the straight line from sample `first` to sample
/// `last`. Each sample is the one before plus the slope, rounded to 32 bits, so that the last may differ
/// from what it was by their rounding. Nothing happens when last does not lie above first.
/// Throws std::out_of_range for samples outside the trial.
void InterpolateLine(Trial& trial, const ChannelList& channels, std::int32_t first, std::int32_t last);

}  // namespace velmora
