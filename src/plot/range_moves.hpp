#pragma once

#include <qcustomplot.h>

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
  enum class Along { Both, X, Y };
  [[nodiscard]] GraphRange Panned(const QPointF& from, const QPointF& to, Along along) const;
  /// Zooms the abscissa at the pointer, with shift the ordinate; with control, or sideways, pans.
  [[nodiscard]] GraphRange Wheeled(const QWheelEvent& event) const;
  [[nodiscard]] GraphRange Zoomed(const QRectF& area) const;

 private:
  const QCPAxis& x_;
  const QCPAxis& y_;
  bool equalScales_;
};

}  // namespace velmora
