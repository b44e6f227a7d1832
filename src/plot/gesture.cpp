#include "plot/gesture.hpp"

namespace velmora {

Gesture LeftGesture(TrackMode track) {
  switch (track) {
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

bool IsPan(Gesture gesture) {
  return gesture == Gesture::Pan || gesture == Gesture::PanX || gesture == Gesture::PanY;
}

Qt::CursorShape PointerOf(TrackMode track) {
  if (track == TrackMode::ZoomArea) {
    return Qt::CrossCursor;
  }
  const bool pans = track != TrackMode::None && track != TrackMode::DragCursors;
  return pans ? Qt::OpenHandCursor : Qt::ArrowCursor;
}

bool IsClick(const QPointF& pressed, const QPointF& released) {
  return (released - pressed).manhattanLength() < kClickReach;
}

}  // namespace velmora
