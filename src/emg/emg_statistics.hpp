#pragma once

#include <cstdint>

#include "core/simd.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

/// Amplitude statistics of one channel over a range of samples.
struct EmgStatistics {
  double mean = 0.0;
  double deviation = 0.0;  // divisor n; of one pass, so 0 where rounding makes the variance negative
  double meanAbsolute = 0.0;
  double rms = 0.0;
  double largest = 0.0;  // magnitude
  double sum = 0.0;
  double absoluteSum = 0.0;
  double absoluteIntegral = 0.0;  // absoluteSum * timeStep
  std::int32_t zeroCrossings = 0;
  std::int32_t peaks = 0;
};

/// Channels 1 to NChan (index 0 is not used) over samples lo to hi (from 1, within the trial).
///
/// Zero crossings are changes of sign between neighbouring samples of at least the threshold, smaller ones
/// between them passed over; a sample of exactly 0 that counts hides the next one. Peaks are samples of at
/// least the threshold whose two neighbours lie on the same side of them.
PerChannel<EmgStatistics> TakeEmgStatistics(const Trial& trial, SampleRange range,
                                            const PerChannel<double>& thresholds, double timeStep,
                                            SimdLevel level = MachineSimdLevel());
/// The same bits by plain loops, channel by channel.
PerChannel<EmgStatistics> TakeEmgStatisticsPlain(const Trial& trial, SampleRange range,
                                                 const PerChannel<double>& thresholds, double timeStep);

}  // namespace velmora
