#include "plot/stack_overlay.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "plot/plot_colours.hpp"
#include "plot/value_labels.hpp"

namespace velmora {
namespace {

constexpr double kTagHalf = 6.0;
constexpr double kTagHeight = 15.0;
constexpr double kLineReach = 5.0;

double LaneColumn(const StackPlot::Shown& shown, double x) {
  return std::round(shown.rect->axis(QCPAxis::atBottom)->coordToPixel(x));
}

double LaneRow(const StackPlot::Shown& shown, double y) {
  return std::round(shown.rect->axis(QCPAxis::atLeft)->coordToPixel(y));
}

bool Inside(const QRectF& rect, double column) {
  return column >= rect.left() && column <= rect.right() + 1;
}

QString LaneName(const Graph& graph, const Plot& plot) {
  return QString::fromStdString(LabelWithUnits(plot.Name, graph.Plotted()->ChanUnits[plot.Channel].Text()));
}

// A tag that hangs from the top edge and points down along the line.
QPolygonF TagOf(double column, double top) {
  const double shoulder = top + kTagHeight - kTagHalf;
  return QPolygonF({{column - kTagHalf, top},
                    {column + kTagHalf, top},
                    {column + kTagHalf, shoulder},
                    {column, top + kTagHeight},
                    {column - kTagHalf, shoulder}});
}

}  // namespace

StackOverlay::StackOverlay(StackPlot* plot) : QCPLayerable(plot, "overlay"), stack_(plot) {}

void StackOverlay::SetDragged(const Hit& dragged, const QString& text) {
  dragged_ = dragged;
  text_ = text;
}

QColor StackOverlay::Ground(int alpha) const {
  QColor ground = ToQColor(background_);
  ground.setAlpha(alpha);
  return ground;
}

/// All lanes with what lies between them.
QRectF StackOverlay::Extent() const {
  const auto& lanes = stack_->ShownLanes();
  return QRectF(lanes.front().rect->rect()).united(QRectF(lanes.back().rect->rect()));
}

// Cursors may be taken anywhere, on their handles first; other lines in their lanes alone, and before a
// cursor where both are near, since a cursor has room elsewhere.
StackOverlay::Hit StackOverlay::At(const QPointF& place) const {
  const StackPlot::Shown* shown = stack_->LaneAt(place);
  if (shown == nullptr || !Extent().adjusted(-kTagHalf, 0, kTagHalf, 0).contains(place)) {
    return {};
  }
  Hit hit;
  double nearest = kLineReach + 1;
  const std::vector<GraphCursor>& cursors = shown->lane.graph->Cursors;
  for (std::size_t k = 0; k < cursors.size(); ++k) {
    const GraphCursor& cursor = cursors[k];
    double away = std::abs(place.x() - LaneColumn(*shown, cursor.XPosition));
    if (cursor.Kind == CursorKind::Threshold) {
      away = std::abs(place.y() - LaneRow(*shown, cursor.YPosition));
    } else if (cursor.Kind == CursorKind::Value) {
      continue;
    } else if (cursor.Kind == CursorKind::Cursor && away <= kTagHalf &&
               place.y() <= Extent().top() + kTagHeight) {
      return {shown->lane.number, static_cast<int>(k) + 1, cursor.Kind};
    }
    if (away <= kLineReach && away < nearest) {
      nearest = away;
      hit = {shown->lane.number, static_cast<int>(k) + 1, cursor.Kind};
    }
  }
  return hit;
}

void StackOverlay::draw(QCPPainter* painter) {
  if (stack_->ShownLanes().empty()) {
    return;
  }
  DrawHeading(*painter);
  DrawTint(*painter);
  for (const StackPlot::Shown& shown : stack_->ShownLanes()) {
    painter->save();
    painter->setClipRect(shown.rect->rect());
    DrawMarks(*painter, shown);
    painter->restore();
  }
  DrawSelection(*painter);
  DrawCommon(*painter);
  DrawTag(*painter);
  if (!band_.isEmpty()) {
    painter->setPen(QPen(Foreground(background_), 1, Qt::DashLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(band_);
  }
}

void StackOverlay::DrawHeading(QCPPainter& painter) const {
  constexpr int kMargin = 14;
  QFont bold = stack_->font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const QRect place(stack_->viewport().left() + kMargin, stack_->viewport().top() + 7,
                    stack_->viewport().width() - 2 * kMargin, metrics.height());
  painter.setFont(bold);
  painter.setPen(Foreground(background_));
  painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop,
                   metrics.elidedText(stack_->Heading(), Qt::ElideMiddle, place.width()));
}

void StackOverlay::DrawTint(QCPPainter& painter) const {
  const StackPlot::Shown& first = stack_->ShownLanes().front();
  std::vector<double> columns;
  for (const GraphCursor& cursor : first.lane.graph->Cursors) {
    if (cursor.Kind == CursorKind::Cursor) {
      columns.push_back(LaneColumn(first, cursor.XPosition));
    }
  }
  if (columns.size() == 2) {
    const auto [left, right] = std::minmax(columns[0], columns[1]);
    QColor tint = Foreground(background_);
    tint.setAlpha(26);
    painter.fillRect(QRectF(QPointF(left, Extent().top()), QPointF(right, Extent().bottom())) & Extent(),
                     tint);
  }
}

// The first one last: where handles meet, cursor 1 stays on top.
void StackOverlay::DrawCommon(QCPPainter& painter) const {
  const StackPlot::Shown& first = stack_->ShownLanes().front();
  const std::vector<GraphCursor>& cursors = first.lane.graph->Cursors;
  for (std::size_t k = cursors.size(); k-- > 0;) {
    const double column = LaneColumn(first, cursors[k].XPosition);
    if (cursors[k].Kind == CursorKind::Cursor && Inside(Extent(), column)) {
      const QColor colour = CursorColour(cursors[k], background_);
      painter.setPen(QPen(colour, 1));
      painter.drawLine(QLineF(column, Extent().top(), column, Extent().bottom()));
      painter.setBrush(colour);
      painter.drawPolygon(TagOf(column, Extent().top()));
    }
  }
}

void StackOverlay::DrawMarks(QCPPainter& painter, const StackPlot::Shown& shown) const {
  DrawSpans(painter, shown);
  for (const GraphCursor& cursor : shown.lane.graph->Cursors) {
    if (cursor.Kind == CursorKind::Threshold) {
      DrawThreshold(painter, shown, cursor);
    } else if (cursor.Kind == CursorKind::Onset || cursor.Kind == CursorKind::Offset) {
      DrawEdge(painter, shown, cursor);
    }
  }
  DrawValues(painter, shown);
  DrawNames(painter, shown);
}

// From an onset to the offset behind it in the list.
void StackOverlay::DrawSpans(QCPPainter& painter, const StackPlot::Shown& shown) const {
  constexpr int kTint = 28;
  const QRectF rect(shown.rect->rect());
  const GraphCursor* onset = nullptr;
  for (const GraphCursor& cursor : shown.lane.graph->Cursors) {
    if (cursor.Kind == CursorKind::Onset) {
      onset = &cursor;
    } else if (cursor.Kind == CursorKind::Offset && onset != nullptr) {
      const auto [left, right] =
          std::minmax({LaneColumn(shown, onset->XPosition), LaneColumn(shown, cursor.XPosition)});
      QColor tint = CursorColour(*onset, background_);
      tint.setAlpha(kTint);
      painter.fillRect(QRectF(QPointF(left, rect.top()), QPointF(right, rect.bottom())) & rect, tint);
      onset = nullptr;
    }
  }
}

void StackOverlay::DrawThreshold(QCPPainter& painter, const StackPlot::Shown& shown,
                                 const GraphCursor& cursor) const {
  const QRectF rect(shown.rect->rect());
  const double row = LaneRow(shown, cursor.YPosition);
  painter.setPen(QPen(CursorColour(cursor, background_), 1, Qt::DashLine));
  painter.drawLine(QLineF(rect.left(), row, rect.right(), row));
  // Something to grab at the right end.
  painter.setPen(Qt::NoPen);
  painter.setBrush(CursorColour(cursor, background_));
  painter.drawPolygon(QPolygonF({{rect.right() + 1, row - kTagHalf},
                                 {rect.right() - kTagHalf - 2, row},
                                 {rect.right() + 1, row + kTagHalf}}));
}

// A line in its lane alone with a flag that points into the span.
void StackOverlay::DrawEdge(QCPPainter& painter, const StackPlot::Shown& shown,
                            const GraphCursor& cursor) const {
  const QRectF rect(shown.rect->rect());
  const double column = LaneColumn(shown, cursor.XPosition);
  const double into = cursor.Kind == CursorKind::Onset ? 7.0 : -7.0;
  const QColor colour = CursorColour(cursor, background_);
  painter.setPen(QPen(colour, 1));
  painter.drawLine(QLineF(column, rect.top(), column, rect.bottom()));
  painter.setBrush(colour);
  painter.drawPolygon(QPolygonF(
      {{column, rect.bottom() - 9}, {column + into, rect.bottom() - 5}, {column, rect.bottom() - 1}}));
}

void StackOverlay::DrawValues(QCPPainter& painter, const StackPlot::Shown& shown) const {
  const QRectF rect(shown.rect->rect());
  const QFontMetrics metrics(stack_->font());
  painter.setFont(stack_->font());
  const ValueLabels labels(*shown.lane.graph, rect, LabelPlace(shown), metrics);
  for (const ValueLabel& label : labels.Placed()) {
    const QColor colour = CursorColour(*label.mark, background_);
    painter.setPen(QPen(colour, 1));
    painter.setBrush(Ground(255));
    if (!label.room.isEmpty()) {
      const double x = std::clamp(label.point.x(), label.room.left(), label.room.right());
      const double y = std::clamp(label.point.y(), label.room.top(), label.room.bottom());
      painter.drawLine(QLineF(label.point, QPointF(x, y)));
    }
    painter.drawEllipse(label.point, 2.5, 2.5);
    if (!label.room.isEmpty()) {
      painter.fillRect(label.room, Ground(190));
      painter.drawText(label.room, Qt::AlignCenter, QString::fromStdString(label.mark->Name));
    }
  }
}

QRectF StackOverlay::LabelPlace(const StackPlot::Shown& shown) const {
  const Graph& graph = *shown.lane.graph;
  if (!graph.TitleVisible) {
    return {};
  }
  const QFontMetrics metrics(stack_->font());
  int width = metrics.horizontalAdvance(QString::number(shown.lane.number)) + 16;
  for (const Plot& plot : graph.Plots) {
    width += plot.Visible ? metrics.horizontalAdvance(LaneName(graph, plot)) + 10 : 0;
  }
  const QRectF rect(shown.rect->rect());
  return QRectF(rect.left() + 1, rect.top() + 1, width, metrics.height()) & rect;
}

// The graph's number, then its channels in their colours.
void StackOverlay::DrawNames(QCPPainter& painter, const StackPlot::Shown& shown) const {
  QRectF place = LabelPlace(shown);
  if (place.isEmpty()) {
    return;
  }
  const QFontMetrics metrics(stack_->font());
  painter.fillRect(place, Ground(215));
  painter.setFont(stack_->font());
  const auto write = [&](const QString& text, const QColor& colour) {
    painter.setPen(colour);
    painter.drawText(place.adjusted(5, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
    place.setLeft(place.left() + metrics.horizontalAdvance(text) + 10);
  };
  QColor quiet = Foreground(background_);
  quiet.setAlpha(150);
  write(QString::number(shown.lane.number), quiet);
  for (const Plot& plot : shown.lane.graph->Plots) {
    if (plot.Visible) {
      write(LaneName(*shown.lane.graph, plot), TraceColour(plot, background_));
    }
  }
}

void StackOverlay::DrawSelection(QCPPainter& painter) const {
  const StackPlot::Shown* selected = stack_->LaneOf(stack_->Selected());
  if (selected != nullptr && stack_->Lanes() > 1) {
    painter.setPen(QPen(QColor(0x3D, 0x8B, 0xE8), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(selected->rect->rect()));
  }
}

// On the side where there is room for it.
void StackOverlay::DrawTag(QCPPainter& painter) const {
  const StackPlot::Shown* shown = stack_->LaneOf(dragged_.graph);
  const auto index = static_cast<std::size_t>(dragged_.cursor - 1);
  if (text_.isEmpty() || shown == nullptr || dragged_.cursor < 1 ||
      index >= shown->lane.graph->Cursors.size()) {
    return;
  }
  const GraphCursor& cursor = shown->lane.graph->Cursors[index];
  const QFontMetrics metrics(stack_->font());
  const bool level = cursor.Kind == CursorKind::Threshold;
  const QRectF rect(shown->rect->rect());
  const double column = level ? rect.right() - 20 : LaneColumn(*shown, cursor.XPosition);
  const double top = level ? LaneRow(*shown, cursor.YPosition) - metrics.height() - 7
                     : cursor.Kind == CursorKind::Cursor ? Extent().top() + 2
                                                         : rect.top() + 2;
  QRectF box(column + kTagHalf + 4, std::max(top, Extent().top()), metrics.horizontalAdvance(text_) + 10,
             metrics.height() + 4);
  if (box.right() > rect.right()) {
    box.moveRight(column - kTagHalf - 4);
  }
  painter.setBrush(Ground(225));
  painter.setPen(QPen(Foreground(background_), 1));
  painter.drawRoundedRect(box, 3, 3);
  painter.setFont(stack_->font());
  painter.drawText(box, Qt::AlignCenter, text_);
}

}  // namespace velmora
