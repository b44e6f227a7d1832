#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {

/// A stretch of a channel beyond its threshold; samples from 1.
struct Burst {
  std::int32_t onset = 0;   // the first sample beyond it; 0: there is none
  std::int32_t offset = 0;  // the first one back behind it, or the last of the range; 0 without an onset

  friend bool operator==(const Burst&, const Burst&) = default;
};

struct ScannedChannel {
  int channel = 1;
  float threshold = 0.0F;
};

/// The first burst of each channel in samples lo to hi (from 1, within the trial). A threshold of 0 or more
/// is exceeded upwards, one below 0 downwards; equal samples neither begin nor end a burst, and NaN does
/// neither.
///
/// All channels go over a stretch of frames that stays in the cache before the next is read: each line of
/// memory comes in once, not once a channel. The same bursts as those of FindBurstPlain.
std::vector<Burst> FindBursts(const Trial& trial, std::span<const ScannedChannel> channels,
                              SampleRange range);

/// One channel, from sample to sample.
Burst FindBurstPlain(const Trial& trial, ScannedChannel scanned, SampleRange range);

}  // namespace velmora
