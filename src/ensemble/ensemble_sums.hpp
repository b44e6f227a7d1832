#pragma once

#include <cstdint>
#include <vector>

#include "core/simd.hpp"
#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// The sums from which the average of any number of trials is made: at each of `intervals` + 1 points, for
/// each channel, the sum of the samples and the sum of their squares. Both are 32-bit, each sample and each
/// square is rounded to 32 bits before it is added, and trials are added in the order in which they come: no
/// trial is kept, and every vector width gives the same bits.
///
/// Two numbers a point are all there is, so the standard deviation is that of the one-pass formula (Chan,
/// Golub and LeVeque, The American Statistician 37, 1983): where the deviation is small against the mean,
/// about a thousandth, few of its digits are left.
class EnsembleSums {
 public:
  /// `channels` of the trials to come, ascending; intervals at least 1. Throws std::bad_alloc; the sums are
  /// then empty.
  void Begin(const ChannelList& channels, std::int32_t intervals);

  [[nodiscard]] const ChannelList& Channels() const { return channels_; }
  [[nodiscard]] int Width() const { return static_cast<int>(channels_.size()); }
  [[nodiscard]] std::int32_t Intervals() const { return intervals_; }

  // Of a trial that has `intervals` + 1 samples and the channels. Others throw std::invalid_argument.

  /// Whether all sums stay numbers when the trial is added: none of its samples is missing, infinite or too
  /// large to be squared.
  [[nodiscard]] bool Fits(const Trial& trial, SimdLevel level = MachineSimdLevel()) const;
  void Add(const Trial& trial, SimdLevel level = MachineSimdLevel());
  /// The same samples out again. What 32 bits lost when they were added does not come back.
  void Remove(const Trial& trial, SimdLevel level = MachineSimdLevel());

  /// Sample k (from 1) of the j-th channel (from 0).
  [[nodiscard]] float Sum(std::int64_t k, int j) const { return sums_.Frame(k)[j]; }
  [[nodiscard]] float Squares(std::int64_t k, int j) const { return sums_.Frame(k)[Width() + j]; }

  /// The mean of `files` trials.
  [[nodiscard]] float Mean(std::int64_t k, int j, std::int32_t files) const;
  /// The standard deviation of at least two trials, with files - 1; 0 where rounding leaves a variance below
  /// 0.
  [[nodiscard]] float Deviation(std::int64_t k, int j, std::int32_t files) const;

 private:
  struct Job;

  ChannelList channels_;
  std::vector<ChannelRun> runs_;
  std::int32_t intervals_ = 0;
  SampleMatrix sums_;  // a frame: the sums, then the sums of squares
};

/// The coefficient of variation of channel `mean`, whose deviations are channel `deviation`, over all
/// samples, in %: the root mean square of the deviations against that of the means. (That of Winter,
/// Biomechanics and Motor Control of Human Movement, divides by the mean size of the means and so is larger.)
/// 0 where all means are 0.
double CoefficientOfVariation(Trial& trial, int mean, int deviation);

}  // namespace velmora
