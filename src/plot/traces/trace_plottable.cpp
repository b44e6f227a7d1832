#include "plot/traces/trace_plottable.hpp"

#include "plot/axes/drawn_axes.hpp"
#include "plot/plot_colours.hpp"
#include "plot/traces/backdrop_painter.hpp"
#include "plot/traces/deviation_painter.hpp"
#include "plot/traces/pixel_scale.hpp"

namespace velmora {

TracePlottable::TracePlottable(QCPAxis* abscissa, QCPAxis* ordinate)
    : QCPAbstractPlottable(abscissa, ordinate) {
  setSelectable(QCP::stNone);
}

void TracePlottable::Show(const Graph* graph, Colour background) {
  graph_ = graph;
  background_ = background;
}

double TracePlottable::selectTest(const QPointF& /*pos*/, bool /*onlySelectable*/,
                                  QVariant* /*details*/) const {
  return -1;
}

// Ranges are the graph's business, never the plot library's.
QCPRange TracePlottable::getKeyRange(bool& foundRange, QCP::SignDomain /*inSignDomain*/) const {
  foundRange = false;
  return {};
}

QCPRange TracePlottable::getValueRange(bool& foundRange, QCP::SignDomain /*inSignDomain*/,
                                       const QCPRange& /*inKeyRange*/) const {
  foundRange = false;
  return {};
}

void TracePlottable::DrawZeroLine(QCPPainter& painter, const QRect& rect) const {
  const Axis ordinate = AxesOn(*graph_, rect.width(), rect.height()).ordinate;
  const PixelScale y = PixelScale::Upward(ordinate, rect.height());
  const double row = y.Pixel(0.0);
  if (graph_->Ordinate.ZeroLine && !graph_->Ordinate.Log && row >= 0 && row <= y.Pixels()) {
    QPen pen(ToQColor(graph_->Ordinate.GridColor));
    pen.setWidthF(1.0);
    painter.setPen(pen);
    painter.drawLine(QLineF(rect.left(), rect.top() + row, rect.left() + rect.width(), rect.top() + row));
  }
}

void TracePlottable::draw(QCPPainter* painter) {
  if (graph_ == nullptr) {
    return;
  }
  painter->setAntialiasing(false);  // with it goes a shift by half a pixel
  const QRect rect = clipRect();
  DrawZeroLine(*painter, rect);
  if (!graph_->Deviations.empty()) {
    PaintDeviations(*painter, *graph_, rect, background_);
  }
  if (!graph_->Backdrops.empty()) {
    PaintBackdrops(*painter, *graph_, rect, background_);
  }
  const bool shapes = painter->modes().testFlag(QCPPainter::pmVectorized);
  traces_.Paint(*painter, *graph_, rect, background_,
                shapes ? TracePainter::Kind::Shapes : TracePainter::Kind::Pixels);
}

void TracePlottable::drawLegendIcon(QCPPainter* /*painter*/, const QRectF& /*rect*/) const {}

}  // namespace velmora
