#pragma once

#include <qcustomplot.h>

#include "plot/traces/trace_painter.hpp"

namespace velmora {

/// All traces of a graph on one pair of axes, as one plottable of the plot library. The axes must have
/// the ranges of the graph.
class TracePlottable : public QCPAbstractPlottable {
 public:
  TracePlottable(QCPAxis* abscissa, QCPAxis* ordinate);

  void Show(const Graph* graph, Colour background);

  double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details) const override;
  QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain) const override;
  QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain,
                         const QCPRange& inKeyRange) const override;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  void DrawZeroLine(QCPPainter& painter, const QRect& rect) const;

  const Graph* graph_ = nullptr;
  Colour background_ = kBlack;
  TracePainter traces_;
};

}  // namespace velmora
