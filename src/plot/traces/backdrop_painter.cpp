#include "plot/traces/backdrop_painter.hpp"

#include <QPolygonF>

#include "plot/plot_colours.hpp"
#include "plot/traces/pixel_scale.hpp"

namespace velmora {

void PaintBackdrops(QPainter& painter, const Graph& graph, const QRect& rect, Colour background) {
  constexpr int kFaint = 130;
  constexpr double kWide = 4.0;
  const PixelScale x = PixelScale::Across(Drawable(graph.Abscissa), rect.width());
  const PixelScale y = PixelScale::Upward(Drawable(graph.Ordinate), rect.height());
  const Graph::Ends ends = graph.TrialEnds();
  const QPointF corner = rect.topLeft();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Backdrop& backdrop : graph.Backdrops) {
    const auto plot = static_cast<std::size_t>(backdrop.Channel - 1);
    if (backdrop.Values.size() < 2 || plot >= graph.Plots.size() || !graph.Plots[plot].Visible) {
      continue;
    }
    const double step = (ends.last - ends.first) / static_cast<double>(backdrop.Values.size() - 1);
    QPolygonF line;
    for (std::size_t k = 0; k < backdrop.Values.size(); ++k) {
      line << corner + QPointF(x.Pixel(ends.first + static_cast<double>(k) * step),
                               y.Pixel(static_cast<double>(backdrop.Values[k])));
    }
    QColor colour = TraceColour(graph.Plots[plot], background);
    colour.setAlpha(kFaint);
    painter.setPen(QPen(colour, kWide, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
  }
  painter.restore();
}

}  // namespace velmora
