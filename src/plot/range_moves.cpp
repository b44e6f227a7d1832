#include "plot/range_moves.hpp"

#include <cmath>

#include "plot/axes/axis_moves.hpp"

namespace velmora {

GraphRange RangeMoves::Now() const {
  return {x_.range().lower, x_.range().upper, y_.range().lower, y_.range().upper};
}

GraphRange RangeMoves::Panned(const QPointF& from, const QPointF& to, Gesture pan) const {
  const auto step = [](const QCPAxis& axis, double a, double b) {
    return AxisMove{axis.scaleType() == QCPAxis::stLogarithmic, axis.pixelToCoord(a), axis.pixelToCoord(b)};
  };
  GraphRange range = Now();
  if (pan != Gesture::PanY) {
    step(x_, from.x(), to.x()).Pan(range.left, range.right);
  }
  if (pan != Gesture::PanX) {
    step(y_, from.y(), to.y()).Pan(range.bottom, range.top);
  }
  return range;
}

// Touch pads and Alt move sideways; a wheel with shift held does so on some desktops.
GraphRange RangeMoves::Wheeled(const QWheelEvent& event) const {
  constexpr double kNotch = 120.0;
  constexpr double kZoom = 1.25;
  constexpr double kPan = 0.1;
  const QPoint delta = event.angleDelta();
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  const bool sideways = delta.y() == 0 && !shift;
  const double notches = (delta.y() != 0 ? delta.y() : delta.x()) / kNotch;
  GraphRange range = Now();
  const QCPAxis& axis = shift ? y_ : x_;
  double& low = shift ? range.bottom : range.left;
  double& high = shift ? range.top : range.right;
  const bool log = axis.scaleType() == QCPAxis::stLogarithmic;
  if (event.modifiers().testFlag(Qt::ControlModifier) || sideways) {
    const double width = axis.axisRect()->width();
    const double from = axis.axisRect()->left();
    AxisMove{log, axis.pixelToCoord(from), axis.pixelToCoord(from + notches * kPan * width)}.Pan(low, high);
  } else {
    const double factor = std::pow(kZoom, -notches);
    const auto zoom = [factor](const QCPAxis& along, double at, double& from, double& to) {
      AxisMove{along.scaleType() == QCPAxis::stLogarithmic, along.pixelToCoord(at), 0}.Zoom(factor, from, to);
    };
    if (!shift || equalScales_) {
      zoom(x_, event.position().x(), range.left, range.right);
    }
    if (shift || equalScales_) {
      zoom(y_, event.position().y(), range.bottom, range.top);
    }
  }
  return range;
}

std::optional<GraphRange> RangeMoves::Zoomed(const QPointF& from, const QPointF& to) const {
  const QRectF area = QRectF(from, to).normalized() & QRectF(x_.axisRect()->rect());
  if (area.width() < kClickReach || area.height() < kClickReach) {
    return std::nullopt;
  }
  return GraphRange{x_.pixelToCoord(area.left()), x_.pixelToCoord(area.right()),
                    y_.pixelToCoord(area.bottom()), y_.pixelToCoord(area.top())};
}

}  // namespace velmora
