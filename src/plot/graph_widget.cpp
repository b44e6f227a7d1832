#include "plot/graph_widget.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "plot/axis_moves.hpp"
#include "plot/cursor_overlay.hpp"
#include "plot/plot_colours.hpp"

namespace velmora {

GraphWidget::GraphWidget(QWidget* parent) : GraphPlot(parent) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  band_ = new QCPItemRect(this);
  band_->setVisible(false);
  band_->setLayer(CursorLayer());
  band_->setClipToAxisRect(true);
  for (QCPItemPosition* corner : {band_->topLeft, band_->bottomRight}) {
    corner->setType(QCPItemPosition::ptAbsolute);
  }
}

void GraphWidget::Redraw() {
  Arrange();
  replot(QCustomPlot::rpQueuedReplot);
}

void GraphWidget::RedrawCursors() {
  CursorLayer()->replot();
}

void GraphWidget::resizeEvent(QResizeEvent* event) {
  QCustomPlot::resizeEvent(event);
  Redraw();
}

bool GraphWidget::CancelGesture() {
  const bool busy = gesture_ != Gesture::None;
  gesture_ = Gesture::None;
  band_->setVisible(false);
  Overlay().SetDragged(0, {});
  RedrawCursors();
  return busy;
}

GraphRange GraphWidget::Range() const {
  return {xAxis->range().lower, xAxis->range().upper, yAxis->range().lower, yAxis->range().upper};
}

GraphWidget::Gesture GraphWidget::LeftGesture() const {
  switch (Shown()->Track) {
    case TrackMode::PanXAndY:
      return Gesture::Pan;
    case TrackMode::PanX:
    case TrackMode::DragCursors:
      return Gesture::PanX;
    case TrackMode::PanY:
      return Gesture::PanY;
    case TrackMode::ZoomArea:
      return Gesture::Area;
    case TrackMode::None:
      break;
  }
  return Gesture::None;
}

void GraphWidget::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (Shown() == nullptr || gesture_ != Gesture::None) {
    return;
  }
  pressed_ = last_ = event->position();
  if (event->button() == Qt::RightButton) {
    emit rightClicked(event->globalPosition().toPoint());
    return;
  }
  if (!axisRect()->rect().contains(pressed_.toPoint())) {
    return;
  }
  if (event->button() == Qt::MiddleButton) {
    gesture_ = Gesture::Pan;
  } else if (event->button() == Qt::LeftButton) {
    const CursorOverlay::Hit hit = Overlay().At(pressed_);
    cursor_ = hit.cursor;
    gesture_ = hit.part == CursorOverlay::Part::Line        ? Gesture::Cursor
               : hit.part == CursorOverlay::Part::Crosshair ? Gesture::Crosshair
                                                            : LeftGesture();
    if (gesture_ == Gesture::Cursor) {
      DragCursor(pressed_);
    }
  }
  ShowPointer(pressed_);
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  switch (gesture_) {
    case Gesture::None:
      break;
    case Gesture::Cursor:
      DragCursor(place);
      break;
    case Gesture::Crosshair:
      emit crosshairDragged(cursor_, yAxis->pixelToCoord(place.y()));
      RedrawCursors();
      break;
    case Gesture::Area:
      band_->topLeft->setPixelPosition(pressed_);
      band_->bottomRight->setPixelPosition(place);
      band_->setPen(QPen(Foreground(Background()), 1, Qt::DashLine));
      band_->setVisible(true);
      RedrawCursors();
      break;
    default:
      PanTo(place);
  }
  last_ = place;
  ShowPointer(place);
  if (Shown() != nullptr && axisRect()->rect().contains(place.toPoint())) {
    emit pointed(xAxis->pixelToCoord(place.x()), yAxis->pixelToCoord(place.y()));
  }
}

void GraphWidget::mouseReleaseEvent(QMouseEvent* event) {
  constexpr double kSmallest = 4.0;
  const QPointF place = event->position();
  const bool still = (place - pressed_).manhattanLength() < kSmallest;
  const Gesture ended = gesture_;
  if (!CancelGesture()) {
    if (event->button() == Qt::LeftButton && still) {
      emit clicked();
    }
    return;
  }
  if (still && event->button() == Qt::LeftButton && ended != Gesture::Cursor) {
    emit clicked();
  } else if (ended == Gesture::Area) {
    ZoomToArea(QRectF(pressed_, place).normalized());
  }
  ShowPointer(place);
  emit dragEnded();
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  CancelGesture();
  if (Shown() != nullptr && event->button() == Qt::LeftButton) {
    emit doubleClicked();
  }
}

void GraphWidget::DragCursor(const QPointF& place) {
  const double x = xAxis->pixelToCoord(place.x());
  emit cursorDragged(cursor_, x);
  if (Shown() == nullptr || cursor_ > static_cast<int>(Shown()->Cursors.size())) {
    CancelGesture();
    return;
  }
  const double now = Shown()->Cursors[static_cast<std::size_t>(cursor_ - 1)].XPosition;
  Overlay().SetDragged(cursor_, QString::fromStdString(FormatNumber(now, "0.000")));
  RedrawCursors();
}

void GraphWidget::PanTo(const QPointF& place) {
  const auto step = [](const QCPAxis& axis, double from, double to) {
    return AxisMove{axis.scaleType() == QCPAxis::stLogarithmic, axis.pixelToCoord(from),
                    axis.pixelToCoord(to)};
  };
  GraphRange range = Range();
  if (gesture_ != Gesture::PanY) {
    step(*xAxis, last_.x(), place.x()).Pan(range.left, range.right);
  }
  if (gesture_ != Gesture::PanX) {
    step(*yAxis, last_.y(), place.y()).Pan(range.bottom, range.top);
  }
  emit rangeChosen(range);
}

void GraphWidget::ZoomToArea(const QRectF& area) {
  constexpr double kSmallest = 4.0;
  const QRectF inside = area & QRectF(axisRect()->rect());
  if (inside.width() < kSmallest || inside.height() < kSmallest) {
    return;
  }
  emit rangeChosen({xAxis->pixelToCoord(inside.left()), xAxis->pixelToCoord(inside.right()),
                    yAxis->pixelToCoord(inside.bottom()), yAxis->pixelToCoord(inside.top())});
}

// Touch pads and Alt move sideways; a wheel with shift held does so on some desktops.
void GraphWidget::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120.0;
  constexpr double kZoom = 1.25;
  constexpr double kPan = 0.1;
  event->accept();
  if (Shown() == nullptr) {
    return;
  }
  const QPoint delta = event->angleDelta();
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool sideways = delta.y() == 0 && !shift;
  const double notches = (delta.y() != 0 ? delta.y() : delta.x()) / kNotch;
  GraphRange range = Range();
  QCPAxis& axis = shift ? *yAxis : *xAxis;
  double& low = shift ? range.bottom : range.left;
  double& high = shift ? range.top : range.right;
  const bool log = axis.scaleType() == QCPAxis::stLogarithmic;
  if (event->modifiers().testFlag(Qt::ControlModifier) || sideways) {
    const double width = axisRect()->width();
    const double from = axisRect()->left();
    AxisMove{log, axis.pixelToCoord(from), axis.pixelToCoord(from + notches * kPan * width)}.Pan(low, high);
  } else {
    const double at = shift ? event->position().y() : event->position().x();
    AxisMove{log, axis.pixelToCoord(at), 0}.Zoom(std::pow(kZoom, -notches), low, high);
  }
  emit rangeChosen(range);
}

void GraphWidget::ShowPointer(const QPointF& place) {
  Qt::CursorShape shape = Qt::ArrowCursor;
  const bool inside = Shown() != nullptr && axisRect()->rect().contains(place.toPoint());
  if (gesture_ == Gesture::Pan || gesture_ == Gesture::PanX || gesture_ == Gesture::PanY) {
    shape = Qt::ClosedHandCursor;
  } else if (inside &&
             (gesture_ == Gesture::Cursor || Overlay().At(place).part == CursorOverlay::Part::Line)) {
    shape = Qt::SplitHCursor;
  } else if (inside &&
             (gesture_ == Gesture::Crosshair || Overlay().At(place).part != CursorOverlay::Part::None)) {
    shape = Qt::SplitVCursor;
  } else if (inside && Shown()->Track == TrackMode::ZoomArea) {
    shape = Qt::CrossCursor;
  } else if (inside && Shown()->Track != TrackMode::None && Shown()->Track != TrackMode::DragCursors) {
    shape = Qt::OpenHandCursor;
  }
  if (cursor().shape() != shape) {
    setCursor(shape);
  }
}

}  // namespace velmora
