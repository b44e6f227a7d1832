#pragma once

#include <algorithm>
#include <cmath>

#include "graph/graph.hpp"

namespace velmora {

/// The mapping of an axis to pixels: `From` lies at pixel 0 and `To` at pixel `Pixels`, linearly or by
/// the logarithm.
class PixelScale {
 public:
  /// An axis from left to right, or from bottom (pixel `pixels`) to top (pixel 0).
  static PixelScale Across(const Axis& axis, int pixels) { return {axis, pixels, false}; }
  static PixelScale Upward(const Axis& axis, int pixels) { return {axis, pixels, true}; }

  [[nodiscard]] int Pixels() const { return pixels_; }
  /// Far outside, at the low end, for what a logarithm cannot show. NaN stays NaN.
  [[nodiscard]] double Pixel(double value) const {
    constexpr double kFar = 1e7;
    const double at = log_ ? std::log(std::max(value, 1e-300)) : value;
    return std::clamp((at - from_) * factor_, -kFar, kFar);
  }
  [[nodiscard]] double Value(double pixel) const {
    const double at = pixel == pixels_ ? to_ : from_ + pixel / factor_;
    return log_ ? std::exp(at) : at;
  }
  /// The row or column of pixels at a place, never less for a larger one; the far end of the axis belongs to
  /// the last, also where rounding has put it a little before.
  [[nodiscard]] int CellAt(double pixel) const {
    constexpr double kRounding = 1e-6;
    constexpr int kAbove = 1 << 24;  // what is cut off is cut downwards, also left of zero
    const int cell = static_cast<int>(pixel + (kAbove + kRounding)) - kAbove;
    return cell == pixels_ && pixel < pixels_ + kRounding ? pixels_ - 1 : cell;
  }
  [[nodiscard]] int Cell(double value) const { return CellAt(Pixel(value)); }

 private:
  PixelScale(const Axis& axis, int pixels, bool flipped) : pixels_(pixels), log_(axis.Log) {
    from_ = flipped ? axis.Maximum : axis.Minimum;
    to_ = flipped ? axis.Minimum : axis.Maximum;
    if (log_) {
      from_ = std::log(from_);
      to_ = std::log(to_);
    }
    factor_ = pixels / (to_ - from_);
  }

  int pixels_;
  bool log_;
  double from_;
  double to_;
  double factor_;
};

/// The range of an axis as it can be drawn: never empty, and above zero where it is logarithmic.
inline Axis Drawable(const Axis& axis) {
  constexpr double kDecades = 1e-4;
  Axis drawn = axis;
  if (drawn.Log) {
    drawn.Maximum = drawn.Maximum > 0 ? drawn.Maximum : 1.0;
    drawn.Minimum = drawn.Minimum > 0 ? drawn.Minimum : drawn.Maximum * kDecades;
  }
  if (!(drawn.Maximum > drawn.Minimum)) {
    const double middle = std::isfinite(drawn.Minimum) ? drawn.Minimum : 0.0;
    const double half = std::max(std::abs(middle) * 1e-3, 1e-9);
    drawn.SetMinMax(drawn.Log ? middle / 2 : middle - half, drawn.Log ? middle * 2 : middle + half);
  }
  return drawn;
}

}  // namespace velmora
