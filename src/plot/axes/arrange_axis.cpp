#include "plot/axes/arrange_axis.hpp"

#include "plot/axes/number_ticker.hpp"
#include "plot/plot_colours.hpp"
#include "plot/traces/pixel_scale.hpp"

namespace velmora {
namespace {

// Powers of ten alone are too few where the axis spans less than this.
constexpr double kDecadesFrom = 50.0;

}  // namespace

void ArrangeAxis(QCPAxis& axis, const Axis& from, const AxisLook& look, int numerals) {
  const Axis drawn = Drawable(from);
  const QColor foreground = Foreground(look.background);
  axis.setScaleType(drawn.Log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  axis.setRange(drawn.Minimum, drawn.Maximum);
  if (drawn.Log && drawn.Maximum / drawn.Minimum >= kDecadesFrom) {
    axis.setTicker(QSharedPointer<DecadeTicker>::create());
  } else {
    const auto ticker = QSharedPointer<NumberTicker>::create(drawn.Clock);
    ticker->setTickCount(std::max(numerals, 3));
    axis.setTicker(ticker);
  }
  axis.setTicks(drawn.LabelsVisible);
  axis.setSubTicks(drawn.LabelsVisible);
  axis.setTickLabels(drawn.LabelsVisible);
  axis.setLabel(drawn.CaptionVisible ? QString::fromStdString(drawn.Caption) : QString());
  axis.setLabelFont(look.font);
  axis.setTickLabelFont(look.font);
  for (const auto pen : {&QCPAxis::setBasePen, &QCPAxis::setTickPen, &QCPAxis::setSubTickPen}) {
    (axis.*pen)(QPen(foreground, 1));
  }
  axis.setLabelColor(foreground);
  axis.setTickLabelColor(foreground);
  axis.grid()->setVisible(drawn.MajorGrid);
  const QPen grid(GridColour(drawn, look.background), 1);
  axis.grid()->setPen(grid);
  axis.grid()->setZeroLinePen(grid);
}

}  // namespace velmora
