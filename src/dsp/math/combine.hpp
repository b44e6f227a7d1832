#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// How channels become one, in the order of the dialogue's list.
enum class Combination : std::int32_t {
  Sum,
  Difference,  // the first less the others
  Product,
  Ratio,  // the first by the second; 0 where the second is not above 1e-6 in size
  Mean,
  Resultant,  // root of the sum of squares
  Minimum,
  Maximum,
  WeightedSum,
  Angle,  // atan2(second, first) in degrees
};

struct CombinedChannel {
  std::vector<float> samples;  // 1 to NData
  std::int64_t zeroed = 0;     // ratios that became 0
};

/// Sample by sample, in the order of the list, in 64 bits and rounded once. `weights` are by channel. Ratio
/// and angle take two channels. Throws std::range_error where numbers make none that 32 bits hold.
CombinedChannel CombineChannels(const Trial& trial, Combination how, const ChannelList& channels,
                                const PerChannel<double>& weights);

}  // namespace velmora
