#include "plot/traces/trace_painter.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "plot/axes/drawn_axes.hpp"
#include "plot/plot_colours.hpp"
#include "plot/traces/path_parts.hpp"
#include "plot/traces/path_raster.hpp"
#include "plot/traces/point_marks.hpp"
#include "plot/traces/polylines.hpp"
#include "plot/traces/trace_raster.hpp"

namespace velmora {
namespace {

/// One drawing, settled.
struct Task {
  QPainter& painter;
  const Graph& graph;
  QRect rect;
  Colour background;
  double ratio;  // pixels a unit of the painter
  Axis abscissa;
  Axis ordinate;
  SampleSpan samples;

  /// Whether lines go from sample to sample wherever they lie.
  [[nodiscard]] bool IsPath() const { return graph.Path || !graph.Times().Sorted(); }
  [[nodiscard]] std::int64_t Samples() const { return samples.end - samples.begin; }
  [[nodiscard]] PixelScale X(double pixelsAUnit) const {
    return PixelScale::Across(abscissa, static_cast<int>(std::lround(rect.width() * pixelsAUnit)));
  }
  [[nodiscard]] PixelScale Y(double pixelsAUnit) const {
    return PixelScale::Upward(ordinate, static_cast<int>(std::lround(rect.height() * pixelsAUnit)));
  }
};

Qt::PenStyle ToPenStyle(LineStyle style) {
  switch (style) {
    case LineStyle::None:
      return Qt::NoPen;
    case LineStyle::Solid:
      return Qt::SolidLine;
    default:
      return Qt::CustomDashLine;
  }
}

QPen PenOf(const Plot& plot, const QColor& colour, double width) {
  QPen pen(colour, width, ToPenStyle(plot.Line), Qt::FlatCap, Qt::RoundJoin);
  if (pen.style() == Qt::CustomDashLine) {
    const std::vector<int> lengths = DashLengths(plot.Line);
    pen.setDashPattern(QList<qreal>(lengths.begin(), lengths.end()));
  }
  return pen;
}

/// Draws `pieces`, which are in pixels of `ratio` a unit.
void DrawPieces(const Task& task, QPen pen, const std::vector<QPolygonF>& pieces, double ratio) {
  pen.setWidthF(pen.widthF() * ratio);
  task.painter.save();
  task.painter.translate(task.rect.topLeft());
  task.painter.scale(1 / ratio, 1 / ratio);
  task.painter.setPen(pen);
  task.painter.setBrush(Qt::NoBrush);
  for (const QPolygonF& piece : pieces) {
    task.painter.drawPolyline(piece);
  }
  task.painter.restore();
}

void DrawSampleLines(const Task& task) {
  constexpr double kFine = 1.0;
  for (const Plot& plot : task.graph.Plots) {
    if (plot.Visible && plot.Line != LineStyle::None) {
      const auto pieces = SampleLines(task.graph, plot.Channel, task.samples, task.X(kFine), task.Y(kFine));
      DrawPieces(task, PenOf(plot, TraceColour(plot, task.background), plot.LineWidth), pieces, kFine);
    }
  }
}

std::vector<PathStretch> Stretches(const std::vector<PathPart>& parts, double ratio) {
  std::vector<PathStretch> stretches;
  for (const PathPart& part : parts) {
    const int width = std::max(1, static_cast<int>(std::lround(part.width * ratio)));
    stretches.push_back(
        {part.plot->Channel, part.samples, TraceLook{part.colour.rgba(), width, part.plot->Line}});
  }
  return stretches;
}

/// The pixels of paths as lines up and down their columns, for files: what a path of very many samples
/// covers is much less than its lines.
void DrawPathPixels(const Task& task, const std::vector<PathPart>& parts) {
  constexpr double kFine = 2.0;
  const PixelScale x = task.X(kFine);
  const PixelScale y = task.Y(kFine);
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(x.Pixels()) *
                                    static_cast<std::size_t>(y.Pixels()));
  const PixelArea area{pixels.data(), x.Pixels(), x.Pixels(), y.Pixels()};
  PaintPaths(task.graph, Stretches(parts, kFine), x, y, area);
  for (int column = 0; column < area.columns; ++column) {
    for (int row = 0; row < area.rows;) {
      const std::uint32_t colour = area.first[row * area.stride + column];
      const int top = row;
      while (row < area.rows && area.first[row * area.stride + column] == colour) {
        ++row;
      }
      if (colour != 0) {
        DrawPieces(task, QPen(QColor::fromRgba(colour), 1 / kFine, Qt::SolidLine, Qt::FlatCap),
                   {{{column + 0.5, 1.0 * top}, {column + 0.5, 1.0 * row}}}, kFine);
      }
    }
  }
}

void DrawPathLines(const Task& task, const std::vector<PathPart>& parts) {
  constexpr double kFine = 1.0;
  constexpr std::size_t kMostCorners = 60'000;
  constexpr double kWide = 1.5;
  std::vector<std::vector<QPolygonF>> lines;
  std::size_t corners = 0;
  for (const PathPart& part : parts) {
    lines.push_back(SampleLines(task.graph, part.plot->Channel, part.samples, task.X(kFine), task.Y(kFine)));
    for (const QPolygonF& piece : lines.back()) {
      corners += static_cast<std::size_t>(piece.size());
    }
  }
  if (corners > kMostCorners) {
    DrawPathPixels(task, parts);
    return;
  }
  for (std::size_t k = 0; k < parts.size(); ++k) {
    QPen pen = PenOf(*parts[k].plot, parts[k].colour, parts[k].width);
    const bool wide = pen.widthF() > kWide && pen.style() == Qt::SolidLine;
    pen.setCapStyle(wide ? Qt::RoundCap : Qt::FlatCap);  // wide colours meet without a gap
    DrawPieces(task, pen, lines[k], kFine);
  }
}

/// Two columns a unit of the painter: finer than a screen, and small enough for a file.
void DrawColumnLines(const Task& task) {
  constexpr double kFine = 2.0;
  const PixelScale y = task.Y(kFine);
  const TraceColumns columns(task.graph, task.X(kFine), y);
  for (std::size_t p = 0; p < columns.Plots().size(); ++p) {
    const Plot& plot = *columns.Plots()[p];
    if (plot.Line != LineStyle::None) {
      DrawPieces(task, PenOf(plot, TraceColour(plot, task.background), plot.LineWidth),
                 ColumnLines(columns, static_cast<int>(p), y.Pixels()), kFine);
    }
  }
}

/// Calls `draw` with the places of all marks of one plot: each sample, or where they are too many the
/// extremes of each column.
template <typename Draw>
void ForEachMark(const Task& task, const TraceColumns* columns, int p, int channel, const Draw& draw) {
  const PixelScale x = task.X(1.0);
  const PixelScale y = task.Y(1.0);
  const auto mark = [&](double px, double py) {
    if (px >= 0 && px <= x.Pixels() && py >= 0 && py <= y.Pixels()) {
      draw(QPointF(task.rect.topLeft()) + QPointF(px, py));
    }
  };
  if (columns == nullptr) {
    // Where there are very many, one mark a pixel is all that can be seen.
    const bool many = task.Samples() > 2L * x.Pixels();
    std::vector<bool> marked(
        many ? static_cast<std::size_t>(x.Pixels()) * static_cast<std::size_t>(y.Pixels()) : 0);
    const auto isNew = [&](double px, double py) {
      if (!many || !(px >= 0 && px <= x.Pixels() && py >= 0 && py <= y.Pixels())) {
        return true;
      }
      const auto cell = static_cast<std::size_t>(y.CellAt(py)) * static_cast<std::size_t>(x.Pixels()) +
                        static_cast<std::size_t>(x.CellAt(px));
      const bool before = marked[cell];
      marked[cell] = true;
      return !before;
    };
    for (std::int64_t i = task.samples.begin; i < task.samples.end; ++i) {
      const double px = x.Pixel(task.graph.Times().At(i));
      const double py = y.Pixel(task.graph.Plotted()->matrix.Frame(i)[channel]);
      if (isNew(px, py)) {
        mark(px, py);
      }
    }
    return;
  }
  for (int k = 0; k < columns->Columns(); ++k) {
    const RowSpan& span = columns->At(k, p);
    if (!span.Empty()) {
      mark(k + 0.5, span.top + 0.5);
      mark(k + 0.5, span.bottom + 0.5);
    }
  }
}

// A bar as wide as its distance to the nearest neighbour leaves room for; where bars lie closer than a
// pixel, the extremes of each column.
void DrawBars(const Task& task) {
  constexpr double kRoom = 0.8;
  const PixelScale x = task.X(1.0);
  const PixelScale y = task.Y(1.0);
  const double base = task.ordinate.Log ? y.Pixels() : std::clamp(y.Pixel(0.0), 0.0, 1.0 * y.Pixels());
  for (const Plot& plot : task.graph.Plots) {
    if (!plot.Visible || !plot.Bars) {
      continue;
    }
    double apart = x.Pixels();
    std::vector<QPointF> tops;
    for (std::int64_t i = task.samples.begin; i < task.samples.end; ++i) {
      const double value = task.graph.Plotted()->matrix.Frame(i)[plot.Channel];
      const QPointF top(x.Pixel(task.graph.Times().At(i)), y.Pixel(value));
      if (std::isnan(top.x() + top.y())) {
        continue;
      }
      const double step = tops.empty() ? apart : std::abs(top.x() - tops.back().x());
      apart = step > 0 ? std::min(apart, step) : apart;
      tops.push_back(top);
    }
    const double width = std::max(1.0, apart * kRoom);
    for (const QPointF& top : tops) {
      const QRectF bar(top.x() - width / 2, std::min(top.y(), base), width, std::abs(base - top.y()));
      task.painter.fillRect(bar.translated(task.rect.topLeft()) & QRectF(task.rect),
                            TraceColour(plot, task.background));
    }
  }
}

void DrawMarks(const Task& task, TracePainter::Kind kind) {
  const bool each = task.Samples() <= 2L * task.rect.width() || task.IsPath();
  std::optional<TraceColumns> columns;
  int p = 0;
  for (const Plot& plot : task.graph.Plots) {
    if (!plot.Visible) {
      continue;
    }
    if (plot.Point != PointStyle::None) {
      if (!each && !columns) {
        columns.emplace(task.graph, task.X(1.0), task.Y(1.0));
      }
      const PointMark mark(plot.Point, TraceColour(plot, task.background));
      const QPixmap stamp = mark.Stamp(task.ratio);
      const QPointF middle = QPointF(stamp.width(), stamp.height()) / stamp.devicePixelRatio() / 2;
      ForEachMark(task, columns ? &*columns : nullptr, p, plot.Channel, [&](const QPointF& at) {
        if (kind == TracePainter::Kind::Shapes) {
          mark.Draw(task.painter, at);
        } else {
          task.painter.drawPixmap(at - middle, stamp);
        }
      });
    }
    ++p;
  }
}

// Smooth lines cost much more than columns: they are for few samples, fewer where they lie close and
// the lines are steep.
bool IsSmooth(const Task& task) {
  constexpr std::int64_t kApart = 3;  // pixels
  constexpr std::int64_t kMostApart = 20'000;
  constexpr std::int64_t kMostClose = 4'000;
  const std::int64_t all = task.Samples() * task.graph.VisiblePlots();
  const bool apart = task.Samples() * kApart <= task.rect.width();
  return all <= (apart ? kMostApart : kMostClose);
}

void PaintPixels(const Task& task, QImage& image) {
  const PixelScale x = task.X(task.ratio);
  const PixelScale y = task.Y(task.ratio);
  if (image.width() != x.Pixels() || image.height() != y.Pixels()) {
    image = QImage(x.Pixels(), y.Pixels(), QImage::Format_ARGB32_Premultiplied);
  }
  image.setDevicePixelRatio(task.ratio);
  image.fill(0);
  const PixelArea area{reinterpret_cast<std::uint32_t*>(image.bits()), image.bytesPerLine() / 4,
                       image.width(), image.height()};
  const auto look = [&](const Plot& plot) {
    const int width = std::max(1, static_cast<int>(std::lround(plot.LineWidth * task.ratio)));
    return TraceLook{TraceColour(plot, task.background).rgba(), width, plot.Line};
  };
  if (!task.IsPath()) {
    const TraceColumns columns(task.graph, x, y);
    std::vector<TraceLook> looks;
    for (const Plot* plot : columns.Plots()) {
      looks.push_back(look(*plot));
    }
    PaintColumns(columns, looks, task.abscissa.Log ? 0 : x.Cell(0.0), area);
  } else {
    PaintPaths(task.graph, Stretches(PathParts(task.graph, task.background), task.ratio), x, y, area);
  }
  task.painter.drawImage(task.rect.topLeft(), image);
}

}  // namespace

void TracePainter::Paint(QPainter& painter, const Graph& graph, const QRect& rect, Colour background,
                         Kind kind) {
  const auto [abscissa, ordinate] = AxesOn(graph, rect.width(), rect.height());
  if (rect.isEmpty() || graph.Plotted() == nullptr || graph.Times().Samples() == 0) {
    return;
  }
  const double ratio = kind == Kind::Pixels ? painter.device()->devicePixelRatioF() : 1.0;
  const Task task{
      painter,  graph,
      rect,     background,
      ratio,    abscissa,
      ordinate, graph.Path ? SampleSpan{1, graph.Times().Samples() + 1} : ShownSamples(graph, abscissa)};
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawBars(task);
  const bool resolved = task.Samples() <= 2L * rect.width();
  if (task.IsPath() && (kind == Kind::Shapes || IsSmooth(task))) {
    DrawPathLines(task, PathParts(graph, background));
  } else if (!task.IsPath() && (kind == Kind::Shapes ? resolved : IsSmooth(task))) {
    DrawSampleLines(task);
  } else if (kind == Kind::Shapes) {
    DrawColumnLines(task);
  } else {
    PaintPixels(task, image_);
  }
  DrawMarks(task, kind);
  painter.restore();
}

}  // namespace velmora
