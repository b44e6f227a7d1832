#include "plot/value_labels.hpp"

#include <algorithm>
#include <cmath>

#include "plot/pixel_scale.hpp"

namespace velmora {
namespace {

constexpr double kApart = 3.0;

}  // namespace

ValueLabels::ValueLabels(const Graph& graph, const QRectF& rect, const QRectF& taken,
                         const QFontMetrics& metrics)
    : graph_(graph), rect_(rect) {
  if (!taken.isEmpty()) {
    taken_.push_back(taken);
  }
  const PixelScale x = PixelScale::Across(Drawable(graph.Abscissa), static_cast<int>(rect.width()));
  const PixelScale y = PixelScale::Upward(Drawable(graph.Ordinate), static_cast<int>(rect.height()));
  for (const GraphCursor& cursor : graph.Cursors) {
    const double column = x.Pixel(cursor.XPosition);
    if (cursor.Kind != CursorKind::Value || !(column >= 0 && column <= rect.width())) {
      continue;
    }
    const double row = std::clamp(y.Pixel(cursor.YPosition), 0.0, rect.height());
    const QPointF point = rect.topLeft() + QPointF(column, row);
    const QString text = QString::fromStdString(cursor.Name);
    const QRectF room = RoomFor(point, QSizeF(metrics.horizontalAdvance(text) + 4, metrics.height()));
    if (!room.isEmpty()) {
      taken_.push_back(room);
    }
    placed_.push_back({&cursor, point, room});
  }
}

bool ValueLabels::IsFree(const QRectF& room) const {
  return rect_.contains(room) &&
         std::none_of(taken_.begin(), taken_.end(), [&](const QRectF& other) { return other.intersects(room); });
}

/// Nothing where there is no free place.
QRectF ValueLabels::RoomFor(const QPointF& point, QSizeF size) const {
  const double left = std::clamp(point.x() - size.width() / 2, rect_.left(), rect_.right() - size.width());
  const PixelScale x = PixelScale::Across(Drawable(graph_.Abscissa), static_cast<int>(rect_.width()));
  const PixelScale y = PixelScale::Upward(Drawable(graph_.Ordinate), static_cast<int>(rect_.height()));
  const SampleTimes& times = graph_.Times();
  const std::int64_t from = std::max<std::int64_t>(times.FirstFrom(x.Value(left - rect_.left())) - 1, 1);
  const std::int64_t to =
      std::min(times.FirstFrom(x.Value(left + size.width() - rect_.left())), times.Samples());
  double highest = point.y() - rect_.top();
  double lowest = highest;
  for (const Plot& plot : graph_.Plots) {
    if (plot.Visible && times.Sorted()) {
      const Extremes all = graph_.Envelope().Columns(plot.Channel, from, to, 1).front();
      if (!all.Empty()) {
        highest = std::min(highest, y.Pixel(all.max));
        lowest = std::max(lowest, y.Pixel(all.min));
      }
    }
  }
  for (double step = 0; step < rect_.height(); step += size.height()) {
    const QRectF above(QPointF(left, rect_.top() + highest - kApart - step - size.height()), size);
    if (IsFree(above)) {
      return above;
    }
    const QRectF below(QPointF(left, rect_.top() + lowest + kApart + step), size);
    if (IsFree(below)) {
      return below;
    }
  }
  return {};
}

}  // namespace velmora
