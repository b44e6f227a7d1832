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
  setAccessibleName(tr("Graph"));
  band_ = new QCPItemRect(this);
  band_->setVisible(false);
  band_->setLayer(CursorLayer());
  band_->setClipToAxisRect(true);
  for (QCPItemPosition* corner : {band_->topLeft, band_->bottomRight}) {
    corner->setType(QCPItemPosition::ptAbsolute);
  }
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
  if (Lead() == nullptr || gesture_ != Gesture::None) {
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
  ShowPointer(PointerAt(pressed_));
}

void GraphWidget::PressLeft() {
  if (Previews()) {
    cursor_ = PreviewLines().LevelAt(pressed_);
    gesture_ = cursor_ > 0 ? Gesture::Level : LeftGesture(Lead()->Track);
    return;
  }
  const CursorOverlay::Hit hit = Overlay().At(pressed_);
  cursor_ = hit.cursor;
  gesture_ = hit.part == CursorOverlay::Part::Line        ? Gesture::Line
             : hit.part == CursorOverlay::Part::Crosshair ? Gesture::Crosshair
                                                          : LeftGesture(Lead()->Track);
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
      emit rangeChosen(Moves().Panned(last_, place, gesture_));
  }
  last_ = place;
  ShowPointer(PointerAt(place));
  if (Lead() != nullptr && axisRect()->rect().contains(place.toPoint())) {
    emit pointed(xAxis->pixelToCoord(place.x()), yAxis->pixelToCoord(place.y()));
  }
}

void GraphWidget::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  const bool still = IsClick(pressed_, place);
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
    if (const std::optional<GraphRange> area = Moves().Zoomed(pressed_, place)) {
      emit rangeChosen(*area);
    }
  }
  ShowPointer(PointerAt(place));
  emit dragEnded();
}

void GraphWidget::EmitClicked(const QPointF& place) {
  emit clicked(xAxis->pixelToCoord(place.x()), yAxis->pixelToCoord(place.y()));
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  CancelGesture();
  if (Lead() != nullptr && event->button() == Qt::LeftButton && !Previews()) {
    emit doubleClicked();
  }
}

void GraphWidget::DragCursor(const QPointF& place) {
  const double x = xAxis->pixelToCoord(place.x());
  emit cursorDragged(cursor_, x);
  if (Lead() == nullptr || cursor_ > static_cast<int>(Lead()->Cursors.size())) {
    CancelGesture();
    return;
  }
  const double now = Lead()->Cursors[static_cast<std::size_t>(cursor_ - 1)].XPosition;
  Overlay().SetDragged(cursor_, QString::fromStdString(FormatNumber(now, "0.000")));
  RedrawCursors();
}

void GraphWidget::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (Lead() != nullptr) {
    emit rangeChosen(Moves().Wheeled(*event));
  }
}

Qt::CursorShape GraphWidget::PointerAt(const QPointF& place) const {
  const bool inside = Lead() != nullptr && axisRect()->rect().contains(place.toPoint());
  if (gesture_ == Gesture::Level || (inside && Previews() && PreviewLines().LevelAt(place) > 0)) {
    return Qt::SplitVCursor;
  }
  const CursorOverlay::Part part =
      inside && !Previews() ? Overlay().At(place).part : CursorOverlay::Part::None;
  if (IsPan(gesture_)) {
    return Qt::ClosedHandCursor;
  }
  if (!inside) {
    return Qt::ArrowCursor;
  }
  if (gesture_ == Gesture::Line || part == CursorOverlay::Part::Line) {
    return Qt::SplitHCursor;
  }
  if (gesture_ == Gesture::Crosshair || part != CursorOverlay::Part::None) {
    return Qt::SplitVCursor;
  }
  return PointerOf(Lead()->Track);
}

}  // namespace velmora
