#pragma once

#include <cstdint>

#include "core/trial/helpers.hpp"
#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// Samples put in front of and behind a signal so that the start-up of a filter falls on them.
struct FilterPadding {
  enum class Kind {
    /// Reflected through the end sample, with inversion: value and slope continue.
    Reflective,
    Zeros,
    Means,
  };

  std::int32_t count = 0;
  Kind kind = Kind::Reflective;
};

/// `padding` as callers give it: below 0 means of that many points; else zeros where `zeros`, or
/// reflective. Never more than `limit` or nData - 1 points.
FilterPadding MakePadding(std::int32_t padding, bool zeros, std::int64_t nData, std::int64_t limit);

/// Writes padding.count samples each to `head` and `tail` for the samples `range` (from 1) of x. The
/// mean in front is that of the first samples of x, wherever the range starts; the one behind sums one
/// sample more than it divides by. Sums are rounded to 32 bits at each addition.
/// Throws std::out_of_range when that takes samples that x does not have.
void FillPadding(const ChannelView& x, SampleRange range, const FilterPadding& padding,
                 const ChannelView& head, const ChannelView& tail);

}  // namespace velmora
