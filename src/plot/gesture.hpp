#pragma once

#include <QPointF>
#include <Qt>

#include "graph/graph.hpp"

namespace velmora {

/// What a pressed mouse does over a graph. Line: a cursor, a threshold or a mark is dragged. Level: one of a
/// preview.
enum class Gesture { None, Line, Crosshair, Level, Pan, PanX, PanY, Area };

/// Of the left button where it has hit no line. Beside the cursors a drag pans.
Gesture LeftGesture(TrackMode track);
[[nodiscard]] bool IsPan(Gesture gesture);

/// The pointer over axes where it is on no line.
Qt::CursorShape PointerOf(TrackMode track);

/// Of the distance between two places, in pixels; less is a click, and no area.
inline constexpr double kClickReach = 4.0;
[[nodiscard]] bool IsClick(const QPointF& pressed, const QPointF& released);

}  // namespace velmora
