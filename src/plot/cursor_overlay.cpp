#include "plot/cursor_overlay.hpp"

#include <algorithm>
#include <cmath>

#include "plot/plot_colours.hpp"

namespace velmora {
namespace {

constexpr double kHandleHalf = 6.0;
constexpr double kHandleHeight = 16.0;

bool Upright(const GraphCursor& cursor) {
  return cursor.Crosshair == CrosshairStyle::Vertical || cursor.Crosshair == CrosshairStyle::Both;
}

bool Level(const GraphCursor& cursor) {
  return cursor.Crosshair == CrosshairStyle::Horizontal || cursor.Crosshair == CrosshairStyle::Both;
}

}  // namespace

CursorOverlay::CursorOverlay(QCustomPlot* plot, QCPAxisRect* area)
    : QCPLayerable(plot, "overlay"), area_(area) {}

void CursorOverlay::Show(const Graph* graph, Colour background) {
  graph_ = graph;
  background_ = background;
}

void CursorOverlay::SetDragged(int cursor, const QString& text) {
  dragged_ = cursor;
  text_ = text;
}

QRect CursorOverlay::clipRect() const {
  constexpr int kHandle = static_cast<int>(kHandleHalf) + 1;  // whole at the edges, too
  return area_->rect().adjusted(-kHandle, 0, kHandle, 0);
}

void CursorOverlay::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(true);
}

double CursorOverlay::Column(const GraphCursor& cursor) const {
  return area_->axis(QCPAxis::atBottom)->coordToPixel(cursor.XPosition);
}

double CursorOverlay::Row(const GraphCursor& cursor) const {
  return area_->axis(QCPAxis::atLeft)->coordToPixel(cursor.YPosition);
}

// A tag that hangs from the top edge and points down along the line.
QPolygonF CursorOverlay::Handle(double column) const {
  const double top = area_->top();
  const double shoulder = top + kHandleHeight - kHandleHalf;
  return QPolygonF({{column - kHandleHalf, top},
                    {column + kHandleHalf, top},
                    {column + kHandleHalf, shoulder},
                    {column, top + kHandleHeight},
                    {column - kHandleHalf, shoulder}});
}

CursorOverlay::Hit CursorOverlay::At(const QPointF& place) const {
  constexpr double kReach = 5.0;
  Hit hit;
  double nearest = kReach;
  for (std::size_t k = 0; graph_ != nullptr && k < graph_->Cursors.size(); ++k) {
    const GraphCursor& cursor = graph_->Cursors[k];
    if (cursor.Kind != CursorKind::Cursor) {
      continue;  // to look at
    }
    const double across = std::abs(place.x() - Column(cursor));
    const double along = std::abs(place.y() - Row(cursor));
    const bool onHandle = across <= kHandleHalf && place.y() <= area_->top() + kHandleHeight;
    if (Upright(cursor) && (across <= nearest || onHandle)) {
      nearest = std::min(across, nearest);
      hit = {static_cast<int>(k) + 1, Part::Line};
    } else if (Level(cursor) && along < nearest) {
      nearest = along;
      hit = {static_cast<int>(k) + 1, Part::Crosshair};
    }
  }
  return hit;
}

void CursorOverlay::draw(QCPPainter* painter) {
  if (graph_ == nullptr) {
    return;
  }
  DrawTint(*painter);
  DrawThresholds(*painter);
  // The first ones last: where handles meet, cursor 1 stays on top.
  for (int number = static_cast<int>(graph_->Cursors.size()); number >= 1; --number) {
    if (graph_->Cursors[static_cast<std::size_t>(number - 1)].Kind == CursorKind::Cursor) {
      DrawCursor(*painter, number);
    }
  }
  if (dragged_ >= 1 && dragged_ <= static_cast<int>(graph_->Cursors.size())) {
    DrawTag(*painter, Column(graph_->Cursors[static_cast<std::size_t>(dragged_ - 1)]));
  }
}

void CursorOverlay::DrawTint(QCPPainter& painter) const {
  const auto cursors =
      std::count_if(graph_->Cursors.begin(), graph_->Cursors.end(),
                    [](const GraphCursor& cursor) { return cursor.Kind == CursorKind::Cursor; });
  if (cursors != 2) {
    return;
  }
  const auto [left, right] = std::minmax({Column(graph_->Cursors[0]), Column(graph_->Cursors[1])});
  QColor tint = Foreground(background_);
  tint.setAlpha(26);
  const QRectF range(QPointF(left, area_->top()), QPointF(right, area_->top() + area_->height()));
  painter.fillRect(range & QRectF(area_->rect()), tint);
}

// Names stand at the right end, beside each other where lines are close; one that finds no room is left out.
void CursorOverlay::DrawThresholds(QCPPainter& painter) const {
  constexpr double kGap = 6.0;
  const QFontMetrics metrics(mParentPlot->font());
  const QRectF area(area_->rect());
  std::vector<QRectF> taken;
  painter.setFont(mParentPlot->font());
  for (const GraphCursor& line : graph_->Cursors) {
    const double row = std::round(Row(line));
    if (line.Kind != CursorKind::Threshold || !(row >= area.top() && row <= area.bottom())) {
      continue;
    }
    painter.setPen(QPen(CursorColour(line, background_), 1, Qt::DashLine));
    painter.drawLine(QLineF(area.left(), row, area.right(), row));
    const QString name = line.NameVisible ? QString::fromStdString(line.Name) : QString();
    const double width = metrics.horizontalAdvance(name) + kGap;
    QRectF room(area.right() - width, row - metrics.height(), width, metrics.height());
    const auto meets = [&room](const QRectF& other) { return other.intersects(room); };
    for (auto other = taken.begin();
         (other = std::find_if(taken.begin(), taken.end(), meets)) != taken.end();) {
      room.moveRight(other->left());
    }
    if (!name.isEmpty() && room.left() > area.left()) {
      painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, name);
      taken.push_back(room);
    }
  }
}

void CursorOverlay::DrawCursor(QCPPainter& painter, int number) const {
  const GraphCursor& cursor = graph_->Cursors[static_cast<std::size_t>(number - 1)];
  const QColor colour = CursorColour(cursor, background_);
  const double column = std::round(Column(cursor));
  const double left = area_->left();
  const double right = left + area_->width();
  const double bottom = area_->top() + area_->height();
  painter.setPen(QPen(colour, 1));
  const double row = std::round(Row(cursor));
  if (Level(cursor) && row >= area_->top() && row <= bottom) {
    painter.drawLine(QLineF(left, row, right, row));
  }
  if (!Upright(cursor) || column < left || column > right + 1) {
    return;
  }
  painter.drawLine(QLineF(column, area_->top(), column, bottom));
  painter.setBrush(colour);
  painter.drawPolygon(Handle(column));
  if (cursor.NameVisible) {
    QFont font = mParentPlot->font();
    font.setPixelSize(10);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(qGray(colour.rgb()) > 127 ? Qt::black : Qt::white);
    painter.drawText(QRectF(column - 12, area_->top(), 24, kHandleHeight - 4), Qt::AlignCenter,
                     QString::fromStdString(cursor.Name));
  }
}

// On the side where there is room for it.
void CursorOverlay::DrawTag(QCPPainter& painter, double column) const {
  if (text_.isEmpty()) {
    return;
  }
  const QFont font = mParentPlot->font();
  const QFontMetrics metrics(font);
  QRectF box(column + kHandleHalf + 4, area_->top() + 2, metrics.horizontalAdvance(text_) + 10,
             metrics.height() + 4);
  if (box.right() > area_->right()) {
    box.moveRight(column - kHandleHalf - 4);
  }
  QColor fill = ToQColor(background_);
  fill.setAlpha(225);
  painter.setBrush(fill);
  painter.setPen(QPen(Foreground(background_), 1));
  painter.drawRoundedRect(box, 3, 3);
  painter.setFont(font);
  painter.drawText(box, Qt::AlignCenter, text_);
}

}  // namespace velmora
