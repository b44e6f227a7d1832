#pragma once

#include <span>

namespace velmora {

/// A signal in place through a zero-lag second-order Butterworth low-pass whose -3 dB point both runs
/// together have at `cutoff` Hz, above 0 and below half the rate. Throws FilterDesignError.
void SmoothByLowPass(std::span<double> signal, double rate, double cutoff);

}  // namespace velmora
