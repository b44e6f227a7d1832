#include "plot/result_marks.hpp"

#include <QtMath>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "plot/plot_colours.hpp"

namespace velmora {
namespace {

constexpr double kTextGap = 4.0;
constexpr double kPointRadius = 4.0;
constexpr double kEllipseWidth = 1.5;

}  // namespace

ResultMarks::ResultMarks(QCustomPlot* plot, QCPAxisRect* area) : QCPLayerable(plot, "overlay"), area_(area) {}

void ResultMarks::Show(const Graph* graph, Colour background) {
  graph_ = graph;
  background_ = background;
}

void ResultMarks::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(true);
}

QColor ResultMarks::ColourOf(int index) const {
  if (index < 1 || index >= kColours) {
    return Foreground(background_);
  }
  return TraceColour({.LineColor = ColourTable[static_cast<std::size_t>(index)]}, background_);
}

void ResultMarks::draw(QCPPainter* painter) {
  if (graph_ == nullptr) {
    return;
  }
  painter->setFont(mParentPlot->font());
  DrawBands(*painter);
  DrawLines(*painter);
  DrawEllipses(*painter);
  DrawPoints(*painter);
}

void ResultMarks::DrawBands(QCPPainter& painter) const {
  constexpr double kTint = 0.16;  // the trace below it stays clear
  for (const FormGraph::Band& band : graph_->Bands) {
    const auto [left, right] = std::minmax({Column(band.from), Column(band.to)});
    const QRectF part = QRectF(QPointF(left, area_->top()), QPointF(right, area_->top() + area_->height())) &
                        QRectF(area_->rect());
    if (part.isEmpty()) {
      continue;
    }
    QColor tint = ColourOf(band.colour);
    tint.setAlphaF(static_cast<float>(kTint * band.strength));
    painter.fillRect(part, tint);
    painter.setPen(ColourOf(band.colour));
    const int row = band.above ? Qt::AlignTop | Qt::TextDontClip : Qt::AlignBottom;
    painter.drawText(part.adjusted(kTextGap, kTextGap, 0, -kTextGap), Qt::AlignLeft | row,
                     QString::fromStdString(band.text));
  }
}

// Rows of texts: each takes the first in which it meets no other.
void ResultMarks::DrawLines(QCPPainter& painter) const {
  const QFontMetrics metrics(mParentPlot->font());
  std::vector<double> ends;
  std::vector<const FormGraph::Mark*> marks;
  for (const FormGraph::Mark& mark : graph_->Marks) {
    marks.push_back(&mark);
  }
  std::stable_sort(marks.begin(), marks.end(),
                   [](const FormGraph::Mark* a, const FormGraph::Mark* b) { return a->x < b->x; });
  for (const FormGraph::Mark* mark : marks) {
    const double column = std::round(Column(mark->x));
    if (!(column >= area_->left() && column <= area_->right() + 1)) {
      continue;
    }
    QColor colour = ColourOf(mark->colour);
    colour.setAlphaF(static_cast<float>(mark->strength));
    painter.setPen(QPen(colour, 1, Qt::DashLine));
    painter.drawLine(QLineF(column, area_->top(), column, area_->top() + area_->height()));
    const QString text = QString::fromStdString(mark->text);
    const double width = metrics.horizontalAdvance(text) + 2 * kTextGap;
    const double left = std::min(column, area_->right() - width);
    const auto row = std::find_if(ends.begin(), ends.end(), [&](double end) { return end <= left; });
    const auto number = row - ends.begin();
    if (row == ends.end()) {
      ends.push_back(left + width);
    } else {
      *row = left + width;
    }
    DrawText(painter,
             {left + kTextGap, area_->top() + kTextGap + static_cast<double>(number) * metrics.height()},
             text, colour);
  }
}

// Corner by corner, so that it is right on axes of any scale.
void ResultMarks::DrawEllipses(QCPPainter& painter) const {
  constexpr int kCorners = 180;
  for (const FormGraph::Ellipse& ellipse : graph_->Ellipses) {
    const double angle = qDegreesToRadians(ellipse.angle);
    QPolygonF outline;
    for (int k = 0; k < kCorners; ++k) {
      const double turn = 2 * std::numbers::pi * k / kCorners;
      const double along = ellipse.major * std::cos(turn);
      const double across = ellipse.minor * std::sin(turn);
      outline << QPointF(Column(ellipse.x + along * std::cos(angle) - across * std::sin(angle)),
                         Row(ellipse.y + along * std::sin(angle) + across * std::cos(angle)));
    }
    painter.setPen(QPen(ColourOf(ellipse.colour), kEllipseWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(outline);
  }
}

void ResultMarks::DrawPoints(QCPPainter& painter) const {
  std::vector<QRectF> texts;
  for (const FormGraph::Point& point : graph_->Points) {
    const QPointF at(Column(point.x), Row(point.y));
    if (!QRectF(area_->rect()).contains(at)) {
      continue;
    }
    painter.setPen(QPen(ToQColor(background_), 1));
    painter.setBrush(ColourOf(point.colour));
    painter.drawEllipse(at, kPointRadius, kPointRadius);
    const QString text = QString::fromStdString(point.text);
    texts.push_back(RoomBeside(at, text, texts));
    DrawText(painter, texts.back().topLeft(), text, ColourOf(point.colour));
  }
}

// To the right and above, or wherever else it meets no other text and stays inside.
QRectF ResultMarks::RoomBeside(const QPointF& at, const QString& text,
                               const std::vector<QRectF>& taken) const {
  const QFontMetrics metrics(mParentPlot->font());
  const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
  const double away = kPointRadius + kTextGap;
  const double right = at.x() + away;
  const double left = at.x() - away - size.width();
  const double above = at.y() - size.height();
  const QRectF places[] = {
      {{right, above}, size}, {{right, at.y()}, size}, {{left, above}, size}, {{left, at.y()}, size}};
  const auto fits = [&](const QRectF& place) {
    return QRectF(area_->rect()).contains(place) &&
           std::none_of(taken.begin(), taken.end(),
                        [&](const QRectF& other) { return other.intersects(place); });
  };
  const auto* found = std::find_if(std::begin(places), std::end(places), fits);
  if (found != std::end(places)) {
    return *found;
  }
  return right + size.width() <= area_->right() ? places[0] : places[2];
}

// On a ground of its own, which keeps it legible above a trace.
void ResultMarks::DrawText(QCPPainter& painter, QPointF at, const QString& text, const QColor& colour) const {
  if (text.isEmpty()) {
    return;
  }
  const QFontMetrics metrics(mParentPlot->font());
  const QRectF room(at, QSizeF(metrics.horizontalAdvance(text) + 1, metrics.height()));
  QColor ground = ToQColor(background_);
  ground.setAlpha(190);
  painter.fillRect(room, ground);
  painter.setPen(colour);
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, text);
}

}  // namespace velmora
