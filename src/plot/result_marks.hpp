#pragma once

#include <qcustomplot.h>

#include "graph/graph.hpp"

namespace velmora {

/// What a result view adds to its graph: shaded parts of the abscissa, upright lines with their texts, and
/// points with theirs, and ellipses. Texts that would meet stand one below the other.
class ResultMarks : public QCPLayerable {
 public:
  ResultMarks(QCustomPlot* plot, QCPAxisRect* area);

  void Show(const Graph* graph, Colour background);

 protected:
  void draw(QCPPainter* painter) override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  [[nodiscard]] QRect clipRect() const override { return area_->rect(); }

 private:
  [[nodiscard]] double Column(double x) const { return area_->axis(QCPAxis::atBottom)->coordToPixel(x); }
  [[nodiscard]] double Row(double y) const { return area_->axis(QCPAxis::atLeft)->coordToPixel(y); }
  [[nodiscard]] QColor ColourOf(int index) const;
  void DrawBands(QCPPainter& painter) const;
  void DrawLines(QCPPainter& painter) const;
  void DrawPoints(QCPPainter& painter) const;
  void DrawEllipses(QCPPainter& painter) const;
  [[nodiscard]] QRectF RoomBeside(const QPointF& at, const QString& text,
                                  const std::vector<QRectF>& taken) const;
  void DrawText(QCPPainter& painter, QPointF at, const QString& text, const QColor& colour) const;

  QCPAxisRect* area_;
  const Graph* graph_ = nullptr;
  Colour background_ = kBlack;
};

}  // namespace velmora
