#pragma once

#include <QFontMetrics>
#include <QRectF>
#include <vector>

#include "graph/graph.hpp"

namespace velmora {

/// The text of a value mark where it is drawn; `room` is empty where there is none for it.
struct ValueLabel {
  const GraphCursor* mark = nullptr;
  QPointF point;
  QRectF room;
};

/// Finds places for the texts of a graph's value marks: above the traces or below them, next to what was
/// placed before, and never on the names of the channels (`taken`).
class ValueLabels {
 public:
  ValueLabels(const Graph& graph, const QRectF& rect, const QRectF& taken, const QFontMetrics& metrics);

  [[nodiscard]] const std::vector<ValueLabel>& Placed() const { return placed_; }

 private:
  /// What the traces cover between two columns.
  struct Reach {
    double top;
    double bottom;
  };
  [[nodiscard]] Reach ReachOf(double left, double width) const;
  [[nodiscard]] QRectF ClearRoom(double left, QSizeF size, double row) const;
  [[nodiscard]] QRectF RoomFor(const QPointF& point, QSizeF size) const;
  [[nodiscard]] bool IsFree(const QRectF& room) const;

  const Graph& graph_;
  QRectF rect_;
  std::vector<QRectF> taken_;
  std::vector<ValueLabel> placed_;
};

}  // namespace velmora
