#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/trial/helpers.hpp"
#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// What makes a sample a trigger, in the order of the list that people choose from. With a, b and c the
/// sample before, the sample and the one behind it, H and L the upper and the lower level:
enum class TriggerKind : std::int32_t {
  Above,            // a < H and b >= H
  Below,            // a > H and b <= H
  AboveThenBelow,   // by turns upwards through H and downwards through L
  BelowThenAbove,   // by turns downwards through H and upwards through L
  Outside,          // leaves L..H on either side
  Inside,           // enters L..H from either side
  PeaksAndValleys,  // either of the next two
  Peaks,            // a < b and b >= c
  Valleys           // a > b and b <= c
};

inline constexpr int kTriggerKinds = 9;

/// As lists and files name it: "Above (+ve slope)".
std::string_view KindText(TriggerKind kind);

/// How many levels a kind compares with: 0, 1 (the upper one) or 2.
int LevelsOf(TriggerKind kind);

/// Levels in the units of the channel; they are compared as 32-bit numbers.
struct TriggerCondition {
  TriggerKind kind = TriggerKind::Above;
  float high = 1.0F;
  float low = -1.0F;
};

/// The samples of a channel at which the condition holds, ascending, at most `most` of them. The first and
/// the last sample of the range (from 1, within the matrix) have a neighbour missing and are none. A
/// comparison with NaN holds never.
///
/// Stretches in which nothing happens are passed without a branch a sample. The same triggers as those of
/// ScanPlain.
std::vector<std::int32_t> ScanForTriggers(const SampleMatrix& matrix, int channel,
                                          const TriggerCondition& condition, SampleRange range,
                                          std::size_t most);

/// From sample to sample.
std::vector<std::int32_t> ScanPlain(const SampleMatrix& matrix, int channel,
                                    const TriggerCondition& condition, SampleRange range, std::size_t most);

}  // namespace velmora
