#pragma once

#include <cmath>

namespace velmora {

/// A pan or a zoom of one axis, in values of the axis.
struct AxisMove {
  bool log = false;
  double at = 0.0;  // the value under the pointer
  double to = 0.0;  // of a pan: the value where the pointer is now

  /// Moves the range so that `at` comes to lie where `to` was.
  void Pan(double& low, double& high) const {
    if (log) {
      low *= at / to;
      high *= at / to;
    } else {
      low += at - to;
      high += at - to;
    }
  }
  /// Makes the range `factor` times as wide; `at` stays where it is.
  void Zoom(double factor, double& low, double& high) const {
    if (log) {
      low = at * std::pow(low / at, factor);
      high = at * std::pow(high / at, factor);
    } else {
      low = at + (low - at) * factor;
      high = at + (high - at) * factor;
    }
  }
};

}  // namespace velmora
