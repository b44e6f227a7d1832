#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/questions/long_work.hpp"
#include "core/simd.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Level and spread of one channel over a range, of its samples that are numbers.
struct Descriptive {
  std::int64_t count = 0;  // 0: the rest says nothing
  double mean = 0.0;
  std::optional<double> deviation{};  // with n-1; none for one sample
  double minimum = 0.0;
  double maximum = 0.0;
  std::int32_t minimumAt = 0;  // sample; of equal ones the first
  std::int32_t maximumAt = 0;
  double rms = 0.0;

  [[nodiscard]] double Range() const { return maximum - minimum; }
  [[nodiscard]] std::optional<double> StandardError() const;
  /// deviation / |mean|; 0 for a mean of 0.
  [[nodiscard]] std::optional<double> Variation() const;
};

/// One entry a channel of the list, over samples lo to hi (from 1, within the trial). Sums are 64-bit in
/// ascending order; the deviation is sqrt((sum d^2 - (sum d)^2 / n) / (n - 1)) with d from the mean, two
/// passes (Chan, Golub and LeVeque 1983). The same bits at every level and by the plain loop, which no level
/// asks for. Empty when it was ended.
std::vector<Descriptive> DescribeChannels(const Trial& trial, const ChannelList& channels, SampleRange range,
                                          const GoesOn& goesOn = {},
                                          std::optional<SimdLevel> level = MachineSimdLevel());

/// Central moments about the mean, divided by n.
struct Moments {
  double mean = 0.0;
  double second = 0.0;
  double third = 0.0;
  double fourth = 0.0;

  /// m3 / m2^1.5 and m4 / m2^2 - 3; none for a constant channel.
  [[nodiscard]] std::optional<double> Skewness() const;
  [[nodiscard]] std::optional<double> Kurtosis() const;
};

/// As DescribeChannels.
std::vector<Moments> MomentsOf(const Trial& trial, const ChannelList& channels, SampleRange range,
                               const GoesOn& goesOn = {},
                               std::optional<SimdLevel> level = MachineSimdLevel());

}  // namespace velmora
