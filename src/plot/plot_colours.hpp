#pragma once

#include <QColor>

#include "graph/graph.hpp"

namespace velmora {

QColor ToQColor(Colour colour);

/// Axes, captions and titles are dark on light backgrounds and light on dark ones.
[[nodiscard]] bool IsLight(Colour background);
QColor Foreground(Colour background);
QColor GridColour(const Axis& axis, Colour background);

/// The colour of a plot on this background: its own, darkened or lightened as far as it needs to be
/// seen. White, the last of the table, is black on light backgrounds.
QColor TraceColour(const Plot& plot, Colour background);
/// Yellow, which is lost on white, is blue there, wherever the drawing is given another background.
QColor CursorColour(const GraphCursor& cursor, Colour background);

}  // namespace velmora
