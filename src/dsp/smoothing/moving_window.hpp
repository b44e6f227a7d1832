#pragma once

#include <cstdint>

#include "core/simd.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/turn.hpp"

namespace velmora {

// Moving windows of W samples, in place on whole channels. Window i runs from sample i to i+W-1 and gives
// the output at sample i+h, i = 1 to NData-W: the last full window is not used. Sums are 64-bit, added in
// full and in ascending order for each window, so rounding never builds up from window to window.
// A width below 1, or not below NData, changes nothing.
//
// The plain forms work channel by channel as the definition reads. The others work on many channels and
// several windows at once, in vectors of the level given, and give the same bits.

/// h: where in its window, counted from 0, an output lies: (W-1)/2, an exact half to the even neighbour.
std::int32_t WindowCentre(std::int32_t width);

/// Mean of the unchanged samples. The first h samples and those from NData-W+h+1 on keep their values.
void MovingAverage(Trial& trial, const ChannelList& channels, std::int32_t width,
                   SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
void MovingAveragePlain(Trial& trial, const ChannelList& channels, std::int32_t width);

/// Root mean square of the unchanged samples. The first h samples take the first output; the last W take
/// the output at NData-W (the first output where the window is so wide that there is none).
void MovingRms(Trial& trial, const ChannelList& channels, std::int32_t width,
               SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
void MovingRmsPlain(Trial& trial, const ChannelList& channels, std::int32_t width);

/// Mean absolute value, each output written before the next window is read: outputs inside a window count
/// as inputs. The first h samples take the first output, the last W the last.
void MovingMeanAbsolute(Trial& trial, const ChannelList& channels, std::int32_t width,
                        SimdLevel level = MachineSimdLevel(), const Turn& turn = {});
void MovingMeanAbsolutePlain(Trial& trial, const ChannelList& channels, std::int32_t width);

/// Element h, counted from 0, of the sorted window, each output written before the next window is read.
/// The samples before and behind the outputs keep their values. NaNs sort to the ends.
void MovingMedian(Trial& trial, const ChannelList& channels, std::int32_t width, const Turn& turn = {});
void MovingMedianPlain(Trial& trial, const ChannelList& channels, std::int32_t width);

}  // namespace velmora
