#pragma once

#include <qcustomplot.h>

#include "plot/stack_plot.hpp"

namespace velmora {

/// What lies above the traces of a stack: the names of channels in their lanes, the cursors through all lanes
/// with the range between them tinted, and in each lane the lines and marks that commands set: thresholds,
/// onsets and offsets with the span between them, values with their texts, which keep clear of each other and
/// of the traces.
class StackOverlay : public QCPLayerable {
 public:
  explicit StackOverlay(StackPlot* plot);

  void Show(Colour background) { background_ = background; }

  /// A line of a list of cursors under the mouse.
  struct Hit {
    int graph = 0;   // 0: nothing there
    int cursor = 0;  // from 1, in the list of the graph
    CursorKind kind = CursorKind::Cursor;
  };
  [[nodiscard]] Hit At(const QPointF& place) const;
  /// The line that is dragged, with what is shown beside it; nothing when it is no hit.
  void SetDragged(const Hit& dragged, const QString& text);
  /// The area of a zoom that is being drawn; empty: none.
  void SetBand(const QRectF& band) { band_ = band; }
  [[nodiscard]] QRectF LabelPlace(const StackPlot::Shown& shown) const;

 protected:
  void draw(QCPPainter* painter) override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }
  [[nodiscard]] QRect clipRect() const override { return stack_->viewport(); }

 private:
  void DrawTint(QCPPainter& painter) const;
  void DrawCommon(QCPPainter& painter) const;
  void DrawMarks(QCPPainter& painter, const StackPlot::Shown& shown) const;
  void DrawSpans(QCPPainter& painter, const StackPlot::Shown& shown) const;
  void DrawThreshold(QCPPainter& painter, const StackPlot::Shown& shown, const GraphCursor& cursor) const;
  void DrawEdge(QCPPainter& painter, const StackPlot::Shown& shown, const GraphCursor& cursor) const;
  void DrawValues(QCPPainter& painter, const StackPlot::Shown& shown) const;
  void DrawNames(QCPPainter& painter, const StackPlot::Shown& shown) const;
  void DrawSelection(QCPPainter& painter) const;
  void DrawTag(QCPPainter& painter) const;
  void DrawHeading(QCPPainter& painter) const;
  [[nodiscard]] QRectF Extent() const;
  [[nodiscard]] QColor Ground(int alpha) const;

  StackPlot* stack_;
  Colour background_ = kBlack;
  QRectF band_;
  Hit dragged_;
  QString text_;
};

}  // namespace velmora
