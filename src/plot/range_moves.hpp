#pragma once

#include <qcustomplot.h>

#include <optional>

#include "plot/gesture.hpp"

namespace velmora {

/// The ranges of both axes, as a person set them with the mouse.
struct GraphRange {
  double left = 0.0;
  double right = 1.0;
  double bottom = 0.0;
  double top = 1.0;
};

/// Two axes under the mouse: what a movement over them makes of their ranges.
class RangeMoves {
 public:
  /// Of axes with equal scales both zoom together.
  RangeMoves(const QCPAxis& x, const QCPAxis& y, bool equalScales = false)
      : x_(x), y_(y), equalScales_(equalScales) {}

  [[nodiscard]] GraphRange Now() const;
  /// PanX and PanY move one axis alone.
  [[nodiscard]] GraphRange Panned(const QPointF& from, const QPointF& to, Gesture pan) const;
  /// Zooms the abscissa at the pointer, with shift the ordinate; with control, or sideways, pans.
  [[nodiscard]] GraphRange Wheeled(const QWheelEvent& event) const;
  /// Shows what of the area from corner to corner lies inside the axes. Nothing when that is too small.
  [[nodiscard]] std::optional<GraphRange> Zoomed(const QPointF& from, const QPointF& to) const;

 private:
  const QCPAxis& x_;
  const QCPAxis& y_;
  bool equalScales_;
};

}  // namespace velmora
