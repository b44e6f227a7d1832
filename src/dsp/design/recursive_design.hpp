#pragma once

#include <cstdint>

#include "dsp/filters/filter_design.hpp"

namespace velmora {

/// The Butterworth request whose filter, run forward and backward, has its -3 dB points exactly at the edges
/// asked for: each run alone lets 3 dB pass further out. (Winter 2009, Biomechanics and Motor Control of
/// Human Movement, chapter 3, in the frequencies of the bilinear transformation.)
DesignRequest KeptOverBothRuns(const DesignRequest& butterworth);

struct NotchRequest {
  double rate = 0.0;           // Hz
  double frequency = 0.0;      // Hz, of the first notch
  double width = 2.0;          // Hz between the -3 dB points
  std::int32_t harmonics = 0;  // more notches at multiples; those from half the rate on are left out
  bool keptOverBothRuns = false;
};

/// A section a notch. (Oppenheim and Schafer; the constant-gain notch of iirnotch.) Throws FilterDesignError.
Biquads DesignNotch(const NotchRequest& request);

}  // namespace velmora
