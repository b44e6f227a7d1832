#include "plot/value_labels.hpp"

#include <algorithm>
#include <cmath>

#include "plot/traces/pixel_scale.hpp"

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
  return rect_.contains(room) && std::none_of(taken_.begin(), taken_.end(),
                                              [&](const QRectF& other) { return other.intersects(room); });
}

ValueLabels::Reach ValueLabels::ReachOf(double left, double width) const {
  const PixelScale x = PixelScale::Across(Drawable(graph_.Abscissa), static_cast<int>(rect_.width()));
  const PixelScale y = PixelScale::Upward(Drawable(graph_.Ordinate), static_cast<int>(rect_.height()));
  const SampleTimes& times = graph_.Times();
  const std::int64_t from = std::max<std::int64_t>(times.FirstFrom(x.Value(left - rect_.left())) - 1, 1);
  const std::int64_t to = std::min(times.FirstFrom(x.Value(left + width - rect_.left())), times.Samples());
  Reach reach{rect_.bottom(), rect_.top()};
  for (const Plot& plot : graph_.Plots) {
    if (plot.Visible && times.Sorted()) {
      const Extremes all = graph_.Envelope().Columns(plot.Channel, from, to, 1).front();
      if (!all.Empty()) {
        reach.top = std::min(reach.top, rect_.top() + y.Pixel(all.max));
        reach.bottom = std::max(reach.bottom, rect_.top() + y.Pixel(all.min));
      }
    }
  }
  return reach;
}

QRectF ValueLabels::ClearRoom(double left, QSizeF size, double row) const {
  const Reach reach = ReachOf(left, size.width());
  const int rows = static_cast<int>(std::ceil(rect_.height() / size.height()));
  for (int k = 0; k < rows; ++k) {
    const double step = k * size.height();
    const QRectF above(QPointF(left, std::min(reach.top, row) - kApart - step - size.height()), size);
    if (IsFree(above)) {
      return above;
    }
    const QRectF below(QPointF(left, std::max(reach.bottom, row) + kApart + step), size);
    if (IsFree(below)) {
      return below;
    }
  }
  return {};
}

/// The nearest place clear of the traces; else one beside the point, above them. Nothing where there is none.
QRectF ValueLabels::RoomFor(const QPointF& point, QSizeF size) const {
  const double centred = point.x() - size.width() / 2;
  const auto inside = [&](double left) {
    return std::clamp(left, rect_.left(), std::max(rect_.right() - size.width(), rect_.left()));
  };
  const auto away = [&](const QRectF& room) {
    return std::hypot(room.center().x() - point.x(), room.center().y() - point.y());
  };
  QRectF nearest;
  for (const double aside : {0.0, 0.5, -0.5, 1.0, -1.0, 1.5, -1.5}) {
    const QRectF room = ClearRoom(inside(centred + aside * size.width()), size, point.y());
    if (!room.isEmpty() && (nearest.isEmpty() || away(room) < away(nearest))) {
      nearest = room;
    }
  }
  if (!nearest.isEmpty()) {
    return nearest;
  }
  const double top = std::clamp(point.y() - size.height() / 2, rect_.top(), rect_.bottom() - size.height());
  for (const double left : {point.x() + 2 * kApart, point.x() - 2 * kApart - size.width()}) {
    const QRectF beside(QPointF(left, top), size);
    if (IsFree(beside)) {
      return beside;
    }
  }
  return {};
}

}  // namespace velmora
