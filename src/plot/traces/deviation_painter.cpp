#include "plot/traces/deviation_painter.hpp"

#include <QPainterPath>
#include <cmath>
#include <vector>

#include "plot/plot_colours.hpp"
#include "plot/traces/pixel_scale.hpp"
#include "plot/traces/polylines.hpp"

namespace velmora {
namespace {

/// The band at one place, in units of the painter from the corner of the area.
struct Slice {
  double x;
  double low;
  double high;
};

void AddRun(QPainterPath& path, const std::vector<Slice>& run, QPointF corner) {
  if (run.size() < 2) {
    return;
  }
  path.moveTo(corner + QPointF(run.front().x, run.front().high));
  for (std::size_t k = 1; k < run.size(); ++k) {
    path.lineTo(corner + QPointF(run[k].x, run[k].high));
  }
  for (std::size_t k = run.size(); k-- > 0;) {
    path.lineTo(corner + QPointF(run[k].x, run[k].low));
  }
  path.closeSubpath();
}

/// Sample by sample while they lie apart.
std::vector<Slice> SamplesOf(const Graph& graph, const DeviationBand& band, SampleSpan samples,
                             const PixelScale& x, const PixelScale& y) {
  std::vector<Slice> slices;
  for (std::int64_t i = samples.begin; i < samples.end; ++i) {
    const float* edge = band.Edges->matrix.Frame(i);
    slices.push_back({x.Pixel(graph.Times().At(i)), y.Pixel(edge[band.Low]), y.Pixel(edge[band.Low + 1])});
  }
  return slices;
}

/// From the lowest of the lower edge to the highest of the upper one in each column of half a unit.
std::vector<Slice> ColumnsOf(const Graph& graph, const DeviationBand& band, const PixelScale& x,
                             const PixelScale& y) {
  constexpr int kFine = 2;
  const int columns = x.Pixels() * kFine;
  std::vector<SampleSpan> spans(static_cast<std::size_t>(columns));
  std::int64_t from = graph.Times().FirstFrom(x.Value(0));
  for (int k = 0; k < columns; ++k) {
    const std::int64_t to = graph.Times().FirstFrom(x.Value((k + 1.0) / kFine));
    spans[static_cast<std::size_t>(k)] = {from, to};
    from = to;
  }
  const ColumnExtremes extremes = band.Edges->envelope.Columns(spans);
  std::vector<Slice> slices;
  for (int k = 0; k < columns; ++k) {
    const Extremes low = extremes.At(k, band.Low);
    const Extremes high = extremes.At(k, band.Low + 1);
    if (spans[static_cast<std::size_t>(k)].end > spans[static_cast<std::size_t>(k)].begin) {
      const bool number = !low.Empty() && !high.Empty();
      slices.push_back({(k + 0.5) / kFine, number ? y.Pixel(low.min) : std::nan(""),
                        number ? y.Pixel(high.max) : std::nan("")});
    }
  }
  return slices;
}

}  // namespace

void PaintDeviations(QPainter& painter, const Graph& graph, const QRect& rect, Colour background) {
  constexpr int kTranslucent = 70;
  const Axis abscissa = Drawable(graph.Abscissa);
  const PixelScale x = PixelScale::Across(abscissa, rect.width());
  const PixelScale y = PixelScale::Upward(Drawable(graph.Ordinate), rect.height());
  const SampleSpan samples = ShownSamples(graph, abscissa);
  const bool apart = !graph.Times().Sorted() || samples.end - samples.begin <= 2L * rect.width();
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  for (const DeviationBand& band : graph.Deviations) {
    QPainterPath path;
    std::vector<Slice> run;
    for (const Slice& slice : apart ? SamplesOf(graph, band, samples, x, y) : ColumnsOf(graph, band, x, y)) {
      if (std::isnan(slice.low + slice.high)) {
        AddRun(path, run, rect.topLeft());
        run.clear();
      } else {
        run.push_back(slice);
      }
    }
    AddRun(path, run, rect.topLeft());
    QColor colour = TraceColour(graph.Plots[static_cast<std::size_t>(band.Channel - 1)], background);
    painter.setPen(QPen(colour, 1));
    colour.setAlpha(kTranslucent);
    painter.setBrush(colour);
    painter.drawPath(path);
  }
  painter.restore();
}

}  // namespace velmora
