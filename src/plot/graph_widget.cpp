#include "plot/graph_widget.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "plot/cursor_overlay.hpp"
#include "plot/plot_colours.hpp"
#include "plot/preview_overlay.hpp"

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

void GraphWidget::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (Shown() == nullptr || gesture_ != Gesture::None) {
    return;
  }
  pressed_ = last_ = event->position();
  if (event->button() == Qt::RightButton) {
    if (Previews()) {
      return;
    }
    emit rightClicked(event->globalPosition().toPoint());
    return;
  }
  if (!axisRect()->rect().contains(pressed_.toPoint())) {
    return;
  }
  if (event->button() == Qt::MiddleButton) {
    gesture_ = Gesture::Pan;
  } else if (event->button() == Qt::LeftButton) {
    PressLeft();
  }
  ShowPointer(pressed_);
}

void GraphWidget::PressLeft() {
  if (Previews()) {
    cursor_ = PreviewLines().LevelAt(pressed_);
    gesture_ = cursor_ > 0 ? Gesture::Level : LeftGesture(Shown()->Track);
    return;
  }
  const CursorOverlay::Hit hit = Overlay().At(pressed_);
  cursor_ = hit.cursor;
  gesture_ = hit.part == CursorOverlay::Part::Line        ? Gesture::Line
             : hit.part == CursorOverlay::Part::Crosshair ? Gesture::Crosshair
                                                          : LeftGesture(Shown()->Track);
  if (gesture_ == Gesture::Line) {
    DragCursor(pressed_);
  }
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  switch (gesture_) {
    case Gesture::None:
      break;
    case Gesture::Line:
      DragCursor(place);
      break;
    case Gesture::Crosshair:
      emit crosshairDragged(cursor_, yAxis->pixelToCoord(place.y()));
      RedrawCursors();
      break;
    case Gesture::Level:
      emit levelDragged(cursor_, yAxis->pixelToCoord(place.y()));
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
    if (event->button() == Qt::LeftButton && still && !Previews()) {
      EmitClicked(place);
    }
    return;
  }
  if (still && event->button() == Qt::LeftButton && ended != Gesture::Line && !Previews()) {
    EmitClicked(place);
  } else if (ended == Gesture::Area) {
    ZoomToArea(QRectF(pressed_, place).normalized());
  }
  ShowPointer(place);
  emit dragEnded();
}

void GraphWidget::EmitClicked(const QPointF& place) {
  emit clicked(xAxis->pixelToCoord(place.x()), yAxis->pixelToCoord(place.y()));
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  CancelGesture();
  if (Shown() != nullptr && event->button() == Qt::LeftButton && !Previews()) {
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
  emit rangeChosen(Moves().Panned(last_, place,
                                  gesture_ == Gesture::PanX   ? RangeMoves::Along::X
                                  : gesture_ == Gesture::PanY ? RangeMoves::Along::Y
                                                              : RangeMoves::Along::Both));
}

void GraphWidget::ZoomToArea(const QRectF& area) {
  constexpr double kSmallest = 4.0;
  const QRectF inside = area & QRectF(axisRect()->rect());
  if (inside.width() < kSmallest || inside.height() < kSmallest) {
    return;
  }
  emit rangeChosen(Moves().Zoomed(inside));
}

void GraphWidget::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (Shown() != nullptr) {
    emit rangeChosen(Moves().Wheeled(*event));
  }
}

Qt::CursorShape GraphWidget::PointerAt(const QPointF& place) const {
  Qt::CursorShape shape = Qt::ArrowCursor;
  const bool inside = Shown() != nullptr && axisRect()->rect().contains(place.toPoint());
  if (gesture_ == Gesture::Level || (inside && Previews() && PreviewLines().LevelAt(place) > 0)) {
    return Qt::SplitVCursor;
  }
  const CursorOverlay::Part part =
      inside && !Previews() ? Overlay().At(place).part : CursorOverlay::Part::None;
  if (gesture_ == Gesture::Pan || gesture_ == Gesture::PanX || gesture_ == Gesture::PanY) {
    shape = Qt::ClosedHandCursor;
  } else if (inside && (gesture_ == Gesture::Line || part == CursorOverlay::Part::Line)) {
    shape = Qt::SplitHCursor;
  } else if (inside && (gesture_ == Gesture::Crosshair || part != CursorOverlay::Part::None)) {
    shape = Qt::SplitVCursor;
  } else if (inside && Shown()->Track == TrackMode::ZoomArea) {
    shape = Qt::CrossCursor;
  } else if (inside && Shown()->Track != TrackMode::None && Shown()->Track != TrackMode::DragCursors) {
    shape = Qt::OpenHandCursor;
  }
  return shape;
}

void GraphWidget::ShowPointer(const QPointF& place) {
  const Qt::CursorShape shape = PointerAt(place);
  if (cursor().shape() != shape) {
    setCursor(shape);
  }
}

}  // namespace velmora
