#include "plot/traces/polylines.hpp"

#include <QLineF>
#include <algorithm>
#include <cmath>
#include <optional>

namespace velmora {
namespace {

/// Lines that hang together as long as the next begins where the last one ended.
class Pieces {
 public:
  void Add(const QLineF& line) {
    if (all_.empty() || all_.back().back() != line.p1()) {
      all_.push_back({line.p1()});
    }
    all_.back().push_back(line.p2());
  }
  std::vector<QPolygonF> Take() { return std::move(all_); }

 private:
  std::vector<QPolygonF> all_;
};

// The part of a line inside the rectangle (Liang and Barsky, 1984). Not every painter clips.
std::optional<QLineF> Clip(const QLineF& line, const QRectF& area) {
  double from = 0.0;
  double to = 1.0;
  const auto cut = [&](double direction, double distance) {
    if (direction == 0) {
      return distance >= 0;
    }
    const double at = distance / direction;
    if (direction < 0) {
      from = std::max(from, at);
    } else {
      to = std::min(to, at);
    }
    return from <= to;
  };
  const bool inside = cut(-line.dx(), line.x1() - area.left()) && cut(line.dx(), area.right() - line.x1()) &&
                      cut(-line.dy(), line.y1() - area.top()) && cut(line.dy(), area.bottom() - line.y1());
  if (!inside) {
    return std::nullopt;
  }
  return QLineF(from > 0 ? line.pointAt(from) : line.p1(), to < 1 ? line.pointAt(to) : line.p2());
}

}  // namespace

SampleSpan ShownSamples(const Graph& graph, const Axis& abscissa) {
  const SampleTimes& times = graph.Times();
  if (!times.Sorted()) {
    return {1, times.Samples() + 1};
  }
  const double behind = std::nextafter(abscissa.Maximum, INFINITY);
  return {std::max<std::int64_t>(times.FirstFrom(abscissa.Minimum) - 1, 1),
          std::min(times.FirstFrom(behind) + 1, times.Samples() + 1)};
}

std::vector<QPolygonF> SampleLines(const Graph& graph, int channel, const SampleSpan& samples,
                                   const PixelScale& x, const PixelScale& y) {
  constexpr double kMargin = 2.0;  // the ends of a wide line stay outside
  constexpr double kSame = 0.05;
  const QRectF area(-kMargin, -kMargin, x.Pixels() + 2 * kMargin, y.Pixels() + 2 * kMargin);
  Pieces pieces;
  QPointF last(NAN, NAN);
  for (std::int64_t i = samples.begin; i < samples.end; ++i) {
    const double value = graph.Plotted()->matrix.Frame(i)[channel];
    const QPointF here(x.Pixel(graph.Times().At(i)), y.Pixel(value));
    if (std::abs(here.x() - last.x()) + std::abs(here.y() - last.y()) < kSame) {
      continue;
    }
    if (!std::isnan(here.y() + last.y())) {
      if (const auto line = Clip({last, here}, area)) {
        pieces.Add(*line);
      }
    }
    last = here;
  }
  return pieces.Take();
}

std::vector<QPolygonF> ColumnLines(const TraceColumns& columns, int plot, int rows) {
  std::vector<QPolygonF> pieces;
  bool broken = true;
  for (int k = 0; k < columns.Columns(); ++k) {
    const RowSpan& span = columns.At(k, plot);
    if (span.Empty() || span.bottom < 0 || span.top >= rows) {
      broken = true;
      continue;
    }
    QPointF first(k + 0.5, std::max(span.top, 0) + 0.5);
    QPointF second(k + 0.5, std::min(span.bottom, rows - 1) + 0.5);
    if (broken) {
      pieces.emplace_back();
    } else if (std::abs(pieces.back().back().y() - second.y()) <
               std::abs(pieces.back().back().y() - first.y())) {
      std::swap(first, second);
    }
    broken = false;
    pieces.back() << first;
    if (second != first) {
      pieces.back() << second;
    }
  }
  return pieces;
}

}  // namespace velmora
