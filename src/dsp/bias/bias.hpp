#pragma once

#include <cstdint>

#include "dsp/channel_list.hpp"

namespace velmora {

// Levels are 32-bit and their sums are kept in 32 bits too, rounded at each addition.

/// Mean of samples 1..k of each channel; k 1..NData.
void MeasureFirst(const Trial& trial, std::int32_t k, PerChannel<float>& levels);
/// Mean of the last k samples of each channel, added from the last to the first; k 1..NData.
void MeasureLast(const Trial& trial, std::int32_t k, PerChannel<float>& levels);
/// Mean of samples lo..hi of each channel, 1 <= lo <= hi <= NData.
void MeasureBetween(const Trial& trial, std::int32_t lo, std::int32_t hi, PerChannel<float>& levels);
/// Last sample less the first of each channel.
void MeasureDrift(const Trial& trial, PerChannel<float>& levels);

/// Subtracts each channel's level from all its samples and from ChanOffset.
/// Throws ArithmeticFault where a difference is no 32-bit number.
void SubtractLevels(Trial& trial, const ChannelList& channels, const PerChannel<float>& levels);

/// Takes the straight line through the first and the last sample out of each channel, so that the last
/// comes down to the first. The slopes per sample are left in `slopes`. NData at least 2. Throws
/// ArithmeticFault where a difference is no 32-bit number, so also at the first number of a channel whose
/// first or last sample is none.
void RemoveDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& slopes);

/// Level and drift in one pass: ChanOffset becomes the level given, which the slope per sample then
/// replaces in `levels`. NData at least 2. Throws ArithmeticFault as RemoveDrift does; ChanOffset then stays.
void RemoveLevelAndDrift(Trial& trial, const ChannelList& channels, PerChannel<float>& levels);

}  // namespace velmora
