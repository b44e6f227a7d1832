#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {

/// One of the stretches of equal width that a range is divided into.
struct EpochIntegral {
  std::int32_t first = 0;  // samples, from 1
  std::int32_t last = 0;
  double integral = 0.0;          // sum of the samples times the time step
  double absoluteIntegral = 0.0;  // of their magnitudes
  double mean = 0.0;
  double absoluteMean = 0.0;
  double rms = 0.0;
};

/// The whole epochs of `width` samples in the range; samples behind the last fill none.
std::vector<EpochIntegral> IntegrateEpochs(const Trial& trial, int channel, SampleRange range,
                                           std::int32_t width, double timeStep);

/// How a resetting integrator goes back to zero.
struct ResetRule {
  bool atLevel = false;
  std::int32_t width = 1;  // samples between two resets
  double level = 0.0;      // above 0; units of the channel times seconds
};

struct IntegratorReset {
  std::int32_t sample = 0;   // the last one before it, from 1
  double integral = 0.0;     // that was reached
  std::int32_t samples = 0;  // since the reset before, or the start
};

/// The running sum of magnitudes (or of samples) times the time step, in 64 bits, that goes back to 0 behind
/// every width-th sample, or behind each sample at which it has reached the level. Each sample becomes the
/// sum there. (Winter 2009, Biomechanics and Motor Control of Human Movement, chapter 10.)
std::vector<IntegratorReset> IntegrateAndReset(Trial& trial, int channel, const ResetRule& rule, bool rectify,
                                               double timeStep);

}  // namespace velmora
