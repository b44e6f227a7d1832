#pragma once

#include <vector>

#include "core/simd.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

// Integrals over time of whole channels, one a channel (index 1 to NChan), in units times seconds. The
// sums are 64-bit, in ascending order of the samples; `timeStep` in seconds; NData at least 2.

/// (x(1) + x(N) + 4 (x(3) + x(5) + ...) + 2 (x(2) + x(4) + ...)) * timeStep / 3. The weights are the other
/// way round than in textbooks for samples counted from 1, and an even N gets no correction: results of
/// earlier years were computed so.
PerChannel<float> SimpsonIntegrals(Trial& trial, double timeStep);

/// timeStep * ((x(1) + x(N)) / 2 + x(2) + ... + x(N-1)).
PerChannel<float> TrapezoidIntegrals(Trial& trial, double timeStep);

/// Of one channel over a range of samples.
struct IntegralStatistics {
  double mean = 0.0;
  double deviation = 0.0;  // divisor n
  double path = 0.0;       // sum of |x(i) - x(i-1)|
  double sum = 0.0;
  double absoluteSum = 0.0;
  double timeIntegral = 0.0;      // sum * timeStep
  double absoluteIntegral = 0.0;  // absoluteSum * timeStep

  /// deviation / |mean|; 0 for a mean of 0.
  [[nodiscard]] double Variation() const;
};

/// One entry a channel of the list, over samples lo to hi (from 1, within the trial). The same bits at every
/// level.
std::vector<IntegralStatistics> IntegrateChannels(Trial& trial, const ChannelList& channels,
                                                  SampleRange range, double timeStep,
                                                  SimdLevel level = MachineSimdLevel());

}  // namespace velmora
