#include "plot/traces/point_marks.hpp"

#include <QPainterPath>
#include <cmath>

namespace velmora {
namespace {

constexpr double kSmall = 2.0;
constexpr double kLarge = 4.0;

void AddLine(QPainterPath& path, double x, double y) {
  path.moveTo(-x, -y);
  path.lineTo(x, y);
}

QPainterPath Shape(PointStyle style) {
  const double diagonal = kLarge * std::sqrt(0.5);
  QPainterPath path;
  switch (style) {
    case PointStyle::None:
      break;
    case PointStyle::Dot:
      path.addEllipse(QPointF(0, 0), kSmall, kSmall);
      break;
    case PointStyle::Star:
      AddLine(path, 0, kLarge);
      AddLine(path, kLarge * std::sqrt(0.75), kLarge / 2);
      AddLine(path, kLarge * std::sqrt(0.75), -kLarge / 2);
      break;
    case PointStyle::SmallX:
      AddLine(path, kSmall, kSmall);
      AddLine(path, kSmall, -kSmall);
      break;
    case PointStyle::LargeX:
      AddLine(path, kLarge, kLarge);
      AddLine(path, kLarge, -kLarge);
      break;
    case PointStyle::Plus:
      AddLine(path, kLarge, 0);
      AddLine(path, 0, kLarge);
      break;
    case PointStyle::Cross:
      path.setFillRule(Qt::WindingFill);
      path.addRect(-kLarge, -1.25, 2 * kLarge, 2.5);
      path.addRect(-1.25, -kLarge, 2.5, 2 * kLarge);
      break;
    case PointStyle::Circle:
      path.addEllipse(QPointF(0, 0), kLarge, kLarge);
      break;
    case PointStyle::Square:
      path.addRect(-diagonal, -diagonal, 2 * diagonal, 2 * diagonal);
      break;
    case PointStyle::Diamond:
      path.addPolygon(QPolygonF({{0, -kLarge}, {kLarge, 0}, {0, kLarge}, {-kLarge, 0}, {0, -kLarge}}));
      break;
  }
  return path;
}

}  // namespace

PointMark::PointMark(PointStyle style, const QColor& colour) : style_(style), colour_(colour) {}

void PointMark::Draw(QPainter& painter, const QPointF& at) const {
  const bool filled = style_ == PointStyle::Dot || style_ == PointStyle::Cross;
  painter.setPen(filled ? QPen(Qt::NoPen) : QPen(colour_, 1.2));
  painter.setBrush(filled ? QBrush(colour_) : QBrush(Qt::NoBrush));
  painter.drawPath(Shape(style_).translated(at));
}

QPixmap PointMark::Stamp(double ratio) const {
  constexpr double kSide = 2 * kLarge + 3;
  const int pixels = static_cast<int>(std::ceil(kSide * ratio));
  QPixmap stamp(pixels, pixels);
  stamp.fill(Qt::transparent);
  stamp.setDevicePixelRatio(ratio);
  QPainter painter(&stamp);
  painter.setRenderHint(QPainter::Antialiasing);
  Draw(painter, {pixels / ratio / 2, pixels / ratio / 2});
  return stamp;
}

}  // namespace velmora
