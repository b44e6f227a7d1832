#pragma once

#include <cstdint>
#include <span>

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

/// Writes into channel `target`, which may be one of `channels`, sample by sample: in the order of the list,
/// in 64 bits and rounded once. `weights` are by channel. Ratio and angle take two channels. Returns how many
/// ratios became 0.
std::int64_t CombineChannels(Trial& trial, Combination how, const ChannelList& channels,
                             const PerChannel<double>& weights, int target);

}  // namespace velmora
