#pragma once

#include <cmath>
#include <string>

#include "core/text/numbers.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// Makes a channel of counts one of volts: count x 2 range / 2^bits, of a bipolar converter. Range in mV. The
/// maker's own C3D of the same trials has this factor at 16 bits, and one part in 4096 more at 12. Counts
/// remain where the range or the bits say nothing.
inline void ScaleToVolts(RecordedChannel& channel, double range, double bits) {
  constexpr double millivolts = 1000.0;
  const double gain = 2 * range / millivolts / std::exp2(bits);
  const bool known = range > 0 && bits >= 1 && bits <= 32 && std::isfinite(gain);
  channel.gain = known ? gain : 1.0;
  channel.units = known ? "V" : "counts";
}

inline std::string ScaleLine(double bits) {
  return "Volts are counts x 2 x range / 2^" + PlainNumber(bits);
}

/// Tells of a channel whose rate is not that of the file.
inline void TellOwnRate(Recording& recording, const RecordedChannel& channel, double rate, double own) {
  constexpr double tolerance = 0.1;  // Hz
  if (own > 0 && std::abs(own - rate) > tolerance) {
    recording.remarks.push_back(channel.label + " has a rate of " + PlainNumber(own) +
                                " Hz by its own line; " + PlainNumber(rate) + " Hz was taken.");
  }
}

}  // namespace velmora
