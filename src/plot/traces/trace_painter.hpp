#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>

#include "graph/graph.hpp"

namespace velmora {

/// Draws the lines and points of all visible plots of a graph. Where many samples share a pixel each
/// column is painted from its least to its greatest sample; where they lie apart they are joined by
/// smooth lines.
class TracePainter {
 public:
  /// Pixels are for the screen and for images; shapes stay lines when they are printed or saved.
  enum class Kind { Pixels, Shapes };

  void Paint(QPainter& painter, const Graph& graph, const QRect& rect, Colour background, Kind kind);

 private:
  QImage image_;  // kept from one frame to the next
};

}  // namespace velmora
