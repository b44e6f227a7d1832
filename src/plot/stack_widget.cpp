#include "plot/stack_widget.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"

namespace velmora {

StackWidget::StackWidget(QWidget* parent) : StackPlot(parent) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Graph"));
  CursorLayer()->setMode(QCPLayer::lmBuffered);  // drawn without the rest while something is dragged
}

void StackWidget::Redraw() {
  StackPlot::Redraw();
  emit scrolled();
}

bool StackWidget::CancelGesture() {
  const bool busy = gesture_ != Gesture::None;
  gesture_ = Gesture::None;
  Overlay().SetBand({});
  Overlay().SetDragged({}, {});
  RedrawCursors();
  return busy;
}

RangeMoves StackWidget::MovesOf(const Shown& shown) {
  return {*shown.rect->axis(QCPAxis::atBottom), *shown.rect->axis(QCPAxis::atLeft)};
}

void StackWidget::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const Shown* shown = LaneAt(event->position());
  if (shown == nullptr || gesture_ != Gesture::None) {
    return;
  }
  pressed_ = last_ = event->position();
  graph_ = shown->lane.number;
  if (event->button() == Qt::RightButton) {
    emit rightClicked(graph_);
  } else if (event->button() == Qt::MiddleButton) {
    gesture_ = Gesture::Pan;
  } else if (event->button() == Qt::LeftButton) {
    hit_ = Overlay().At(pressed_);
    gesture_ = hit_.graph > 0 ? Gesture::Line : LeftGesture(shown->lane.graph->Track);
  }
  ShowPointer(PointerAt(pressed_));
}

void StackWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  switch (gesture_) {
    case Gesture::None:
      break;
    case Gesture::Line:
      if (last_ != pressed_ || !IsClick(pressed_, place)) {
        DragLine(place);
        last_ = place;
      }
      ShowPointer(PointerAt(place));
      return;
    case Gesture::Area:
      Overlay().SetBand(QRectF(pressed_, place).normalized());
      RedrawCursors();
      break;
    default:
      if (const Shown* shown = LaneOf(graph_)) {
        emit rangeChosen(graph_, MovesOf(*shown).Panned(last_, place, gesture_));
      }
  }
  last_ = place;
  ShowPointer(PointerAt(place));
  if (const Shown* shown = LaneAt(place)) {
    const QCPAxis& x = *shown->rect->axis(QCPAxis::atBottom);
    const QCPAxis& y = *shown->rect->axis(QCPAxis::atLeft);
    emit pointed(x.pixelToCoord(place.x()), y.pixelToCoord(place.y()));
  }
}

void StackWidget::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  const bool still = IsClick(pressed_, place);
  const bool dragged = gesture_ == Gesture::Line && last_ != pressed_;
  const Gesture ended = gesture_;
  const bool onThreshold = ended == Gesture::Line && hit_.kind == CursorKind::Threshold;
  const bool ended_one = CancelGesture();
  if (event->button() == Qt::LeftButton && still && !dragged) {
    if (LaneOf(graph_) != nullptr) {
      onThreshold ? emit thresholdClicked(graph_) : emit clicked(graph_);
    }
  } else if (const Shown* shown = LaneOf(graph_); ended == Gesture::Area && shown != nullptr) {
    if (const std::optional<GraphRange> area = MovesOf(*shown).Zoomed(pressed_, place)) {
      emit rangeChosen(graph_, *area);
    }
  }
  ShowPointer(PointerAt(place));
  if (ended_one) {
    emit dragEnded();
  }
}

void StackWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  CancelGesture();
  const Shown* shown = LaneAt(event->position());
  if (shown == nullptr || event->button() != Qt::LeftButton) {
    return;
  }
  if (IsLabel(*shown, event->position())) {
    ShowAlone(Alone() > 0 ? 0 : shown->lane.number);
    Redraw();
  } else {
    emit doubleClicked(shown->lane.number);
  }
}

void StackWidget::DragLine(const QPointF& place) {
  const Shown* shown = LaneOf(hit_.graph);
  if (shown == nullptr) {
    CancelGesture();
    return;
  }
  const bool level = hit_.kind == CursorKind::Threshold;
  if (level) {
    emit thresholdDragged(hit_.graph, shown->rect->axis(QCPAxis::atLeft)->pixelToCoord(place.y()));
  } else {
    emit cursorDragged(hit_.graph, hit_.cursor,
                       shown->rect->axis(QCPAxis::atBottom)->pixelToCoord(place.x()));
  }
  const Shown* still = LaneOf(hit_.graph);
  if (still == nullptr || hit_.cursor > static_cast<int>(still->lane.graph->Cursors.size())) {
    CancelGesture();
    return;
  }
  const GraphCursor& now = still->lane.graph->Cursors[static_cast<std::size_t>(hit_.cursor - 1)];
  const std::string text =
      level ? FormatNumber(now.YPosition, "0.0000") : FormatNumber(now.XPosition, "0.000");
  Overlay().SetDragged(hit_, QString::fromStdString(text));
  RedrawCursors();
}

void StackWidget::wheelEvent(QWheelEvent* event) {
  event->accept();
  const Shown* shown = LaneAt(event->position());
  if (shown == nullptr) {
    return;
  }
  if (event->position().x() < shown->rect->left() && FittingLanes() < Lanes()) {
    ScrollTo(First() - (event->angleDelta().y() > 0 ? 1 : -1));
    Redraw();
    return;
  }
  emit rangeChosen(shown->lane.number, MovesOf(*shown).Wheeled(*event));
}

Qt::CursorShape StackWidget::PointerAt(const QPointF& place) const {
  const Shown* shown = LaneAt(place);
  const bool inside = shown != nullptr && shown->rect->rect().contains(place.toPoint());
  const StackOverlay::Hit hit = gesture_ == Gesture::Line ? hit_ : Overlay().At(place);
  if (IsPan(gesture_)) {
    return Qt::ClosedHandCursor;
  }
  if (hit.graph > 0) {
    return hit.kind == CursorKind::Threshold ? Qt::SplitVCursor : Qt::SplitHCursor;
  }
  return inside ? PointerOf(shown->lane.graph->Track) : Qt::ArrowCursor;
}

}  // namespace velmora
