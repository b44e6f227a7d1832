#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/questions/long_work.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// The order statistics of one channel over a range, of its samples that are numbers.
struct OrderStatistics {
  std::int64_t count = 0;  // 0: the rest says nothing
  double median = 0.0;
  double p25 = 0.0;
  double p75 = 0.0;
  double p5 = 0.0;
  double p95 = 0.0;
  double medianDeviation = 0.0;  // median of |x - median|, unscaled

  [[nodiscard]] double Interquartile() const { return p75 - p25; }
};

/// Percentile p (0 to 1) of ascending values y(0..n-1), n at least 1: with h = (n-1) p and k = floor(h),
/// y(k) + (h-k) (y(k+1) - y(k)): linear between order statistics, definition 7 of Hyndman and Fan 1996.
double PercentileOf(std::span<const float> ascending, double p);

/// Of samples in any order, which are all numbers; by sorting them. What the fast way is held against.
OrderStatistics OrderBySorting(std::vector<float> samples);

/// The same to the bit without sorting all: only values near a wanted rank are put in order.
OrderStatistics OrderBySelection(std::span<const float> samples);

/// One entry a channel of the list, over samples lo to hi (from 1, within the trial). Empty when it was
/// ended.
std::vector<OrderStatistics> OrderChannels(const Trial& trial, const ChannelList& channels, SampleRange range,
                                           const GoesOn& goesOn = {});

}  // namespace velmora
