#pragma once

#include "graph/graph.hpp"

namespace velmora {

/// What a pressed mouse does over a graph. Line: a cursor, a threshold or a mark is dragged. Level: one of a
/// preview.
enum class Gesture { None, Line, Crosshair, Level, Pan, PanX, PanY, Area };

/// Of the left button where it has hit no line. Beside the cursors a drag pans.
inline Gesture LeftGesture(TrackMode track) {
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

}  // namespace velmora
