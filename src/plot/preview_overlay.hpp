#pragma once

#include <qcustomplot.h>

#include "graph/graph.hpp"

namespace velmora {

/// What a dialogue beside the graph would do: levels as lines across it with their values, and faint marks
/// where cursors would come to stand.
class PreviewOverlay : public QCPLayerable {
 public:
  PreviewOverlay(QCustomPlot* plot, QCPAxisRect* area);

  void Show(const Graph* graph, Colour background);
  /// The level (from 1) at a place; 0 when there is none.
  [[nodiscard]] int LevelAt(const QPointF& place) const;

 protected:
  void draw(QCPPainter* painter) override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  [[nodiscard]] QRect clipRect() const override { return area_->rect(); }

 private:
  [[nodiscard]] const GraphPreview* Preview() const;
  [[nodiscard]] double Row(const GraphPreview::Level& level) const;
  [[nodiscard]] QColor LevelColour() const;
  void DrawHits(QCPPainter& painter, const GraphPreview& preview) const;
  void DrawLevel(QCPPainter& painter, const GraphPreview::Level& level) const;

  QCPAxisRect* area_;
  const Graph* graph_ = nullptr;
  Colour background_ = kBlack;
};

}  // namespace velmora
