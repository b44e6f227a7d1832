#pragma once

#include <QPainter>
#include <QPalette>
#include <vector>

namespace velmora::ui {

/// A small chart: round numbers on both axes with lines through them, and curves in it. Abscissa values
/// are above 0 when it is logarithmic.
struct LineChart {
  QRectF area;  // of the curves; numbers stand left of it and below it
  double left = 0.0;
  double right = 1.0;
  double bottom = 0.0;
  double top = 1.0;
  bool logarithmic = false;  // the abscissa

  [[nodiscard]] QPointF At(double x, double y) const;
  /// The abscissa at a place, in pixels from the left edge of the area.
  [[nodiscard]] double AbscissaAt(double pixels) const;

  /// `units` are those of the abscissa.
  void PaintGrid(QPainter& painter, const QPalette& palette, const QString& units) const;

 private:
  void PaintOrdinate(QPainter& painter, const QColor& lines, const QColor& numbers) const;
};

}  // namespace velmora::ui
