#pragma once

#include <cstdint>

#include "dsp/channel_list.hpp"

namespace velmora {

// Levels are 32-bit and their sums are kept in 32 bits too, rounded at each addition. What takes them away
// throws std::range_error, before it has changed a channel, where a level or slope is no number; and
// ArithmeticFault where a difference is no 32-bit number.

/// Mean of samples 1..k of each channel; k 1..NData.
void MeasureFirst(const Trial& trial, std::int32_t k, PerChannel<float>& levels);
/// Mean of the last k samples of each channel, added from the last to the first; k 1..NData.
void MeasureLast(const Trial& trial, std::int32_t k, PerChannel<float>& levels);
/// Mean of samples lo..hi of each channel, 1 <= lo <= hi <= NData.
void MeasureBetween(const Trial& trial, std::int32_t lo, std::int32_t hi, PerChannel<float>& levels);
/// Last sample less the first of each channel.
void MeasureDrift(const Trial& trial, PerChannel<float>& levels);

/// Subtracts each channel's level from all its samples and from ChanOffset. Behind a fault ChanOffset is that
/// of the samples: less the levels up to that of the channel with the fault.
void SubtractLevels(Trial& trial, const ChannelList& channels, const PerChannel<float>& levels);

/// Takes the straight line through the first and the last sample out of each channel, so that the last
/// comes down to the first. The slopes per sample are left in `slopes`. NData at least 2.
void RemoveDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& slopes);

/// Level and drift in one pass: ChanOffset becomes the level given, which the slope per sample then
/// replaces in `levels`. NData at least 2. Behind a fault ChanOffset is as it was.
void RemoveLevelAndDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& levels);

}  // namespace velmora
