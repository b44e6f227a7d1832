#pragma once

namespace velmora {

/// A rate in Hz as a file states it; 0, unknown, for what no recording has: beyond it times would be no
/// numbers.
inline double UsableRate(double rate) {
  constexpr double kSlowest = 1e-6;
  constexpr double kFastest = 1e12;
  return rate >= kSlowest && rate <= kFastest ? rate : 0.0;
}

}  // namespace velmora
