#pragma once

#include <QPainter>

#include "graph/graph.hpp"

namespace velmora {

/// The mark of a point style around its sample, the same on the screen and in a picture.
class PointMark {
 public:
  PointMark(PointStyle style, const QColor& colour);

  /// At full quality, for pictures of lines and text.
  void Draw(QPainter& painter, const QPointF& at) const;
  /// The mark as a small image of `ratio` pixels a unit, its sample in the middle.
  [[nodiscard]] QPixmap Stamp(double ratio) const;

 private:
  PointStyle style_;
  QColor colour_;
};

}  // namespace velmora
