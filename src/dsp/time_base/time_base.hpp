#pragma once

#include <cstdint>
#include <string_view>

#include "dsp/channel_list.hpp"

namespace velmora {

// What row 0 holds. Each changes Data(i, 0), its label and units, Duration and, where it says so, Rate;
// samples stay. The time base in force (Workbench::timeBase) is the caller's to set.

/// Data(i, 0) = i; Duration NData, Rate (NData-1)/NData.
void UseSampleCount(Trial& trial);
/// Data(i, 0) from 0 to 100; Duration 100, Rate (NData-1)/100. NData at least 2.
void UsePercentage(Trial& trial);
/// Data(i, 0) = (i-1)/rate; Rate and Duration become those given (Hz, seconds).
void UseSeconds(Trial& trial, double rate, double duration);
/// Data(i, 0) from 0 to length, which becomes Duration. Rate stays. NData at least 2, length above 0.
void UseUserUnits(Trial& trial, double length, std::string_view label, std::string_view units);
/// Data(i, 0) counts frames of video: `rate`/`recordsPerFrame` frames a second over `duration` seconds,
/// spread over the NData-1 intervals. Duration becomes the number of frames, Rate stays.
/// NData at least 2, recordsPerFrame above 0.
void UseFrames(Trial& trial, double recordsPerFrame, double rate, double duration);

/// Data(i, 0) from `first` to `last` in even steps; nothing else changes. NData at least 2.
void SpreadAbscissa(Trial& trial, double first, double last);

// Data moved along the abscissa; row 0 stays.

/// Sample i and sample NData+1-i change places in all channels.
void ReverseSamples(Trial& trial);
/// Moves samples by `shift` places towards higher numbers (lower ones when negative). What is pushed
/// off the end is lost and what is vacated becomes 0. |shift| below NData.
void ShiftSamples(Trial& trial, const ChannelList& channels, std::int32_t shift);
/// The same, but what is pushed off one end comes back in at the other.
void RotateSamples(Trial& trial, const ChannelList& channels, std::int32_t shift);

}  // namespace velmora
