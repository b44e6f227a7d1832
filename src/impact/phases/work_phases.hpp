#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmora {

/// A stretch of a power, moment or force without a change of sign. Places count samples from 0 and lie
/// between two of them where the line that joins these crosses zero.
struct WorkPhase {
  double from = 0.0;
  double to = 0.0;
  double integral = 0.0;    // units of the signal times seconds
  double peak = 0.0;        // the value farthest from zero, the first of equal ones
  std::int64_t peakAt = 0;  // its sample
};

/// The integral of the signal by trapezoids, taken apart where its sign changes: with neighbours a and b of
/// unlike sign the line between them crosses zero at a / (a - b). (Winter 2009, Biomechanics and Motor
/// Control of Human Movement, chapter 6.) All phases together are the whole trapezoid sum. A sample that is 0
/// belongs to the phase around it; two neighbours of 0 end it. `timeStep` in seconds.
std::vector<WorkPhase> FindWorkPhases(std::span<const double> x, double timeStep);

/// Cumulative trapezoids in 64 bits: 0 at the first sample, the whole integral at the last.
std::vector<double> RunningIntegral(std::span<const double> x, double timeStep);

}  // namespace velmora
