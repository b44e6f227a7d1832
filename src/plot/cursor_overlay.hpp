#pragma once

#include <qcustomplot.h>

#include "graph/graph.hpp"

namespace velmora {

/// The cursors of a graph above its traces: a line with a handle each, its number at the head, the time
/// of the one that is dragged, and the range between the first two tinted.
class CursorOverlay : public QCPLayerable {
 public:
  CursorOverlay(QCustomPlot* plot, QCPAxisRect* area);

  void Show(const Graph* graph, Colour background);
  /// The cursor (from 1) that is dragged, 0 for none, with what is shown beside its handle.
  void SetDragged(int cursor, const QString& text);

  /// What of a cursor lies at a place.
  enum class Part { None, Line, Crosshair };
  struct Hit {
    int cursor = 0;  // from 1
    Part part = Part::None;
  };
  [[nodiscard]] Hit At(const QPointF& place) const;

 protected:
  void draw(QCPPainter* painter) override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  [[nodiscard]] QRect clipRect() const override;

 private:
  [[nodiscard]] double Column(const GraphCursor& cursor) const;
  [[nodiscard]] double Row(const GraphCursor& cursor) const;
  [[nodiscard]] QPolygonF Handle(double column) const;
  void DrawTint(QCPPainter& painter) const;
  void DrawCursor(QCPPainter& painter, int number) const;
  void DrawThresholds(QCPPainter& painter) const;
  void DrawTag(QCPPainter& painter, double column) const;

  QCPAxisRect* area_;
  const Graph* graph_ = nullptr;
  Colour background_ = kBlack;
  int dragged_ = 0;
  QString text_;
};

}  // namespace velmora
