#include "ui/trial/channel_drawing.hpp"

#include <QApplication>
#include <algorithm>
#include <cmath>

#include "graph/colours.hpp"

namespace velmora::ui {
namespace {

QColor FromTable(Colour colour) {
  return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

bool IsDarkGround(const QPalette& palette) {
  return palette.color(QPalette::Base).lightnessF() < 0.5;
}

// The trace of a constant runs through the middle.
struct Ordinate {
  double low = 0.0;
  double scale = 0.0;
  double bottom = 0.0;

  Ordinate(const Extremes& whole, const QRectF& area) {
    const double span = static_cast<double>(whole.max) - static_cast<double>(whole.min);
    const bool flat = !(span > 0) || !std::isfinite(span);
    low = flat ? static_cast<double>(whole.min) - 0.5 : static_cast<double>(whole.min);
    scale = area.height() / (flat ? 1.0 : span);
    bottom = area.bottom();
  }
  [[nodiscard]] double At(float value) const { return bottom - (static_cast<double>(value) - low) * scale; }
};

void PaintSelection(QPainter& painter, const QRect& area, const Trial& trial, const QPalette& palette) {
  if (trial.NData < 2 || trial.CursorHi <= trial.CursorLo ||
      (trial.CursorLo <= 1 && trial.CursorHi >= trial.NData)) {
    return;
  }
  const double perSample = area.width() / static_cast<double>(trial.NData - 1);
  const double left = area.left() + (trial.CursorLo - 1) * perSample;
  const double right = area.left() + (trial.CursorHi - 1) * perSample;
  QColor tint = palette.color(QPalette::Highlight);
  tint.setAlphaF(0.18F);
  painter.fillRect(QRectF(left, area.top(), right - left, area.height()), tint);
}

}  // namespace

QColor ChannelColour(int colourIndex, const QPalette& palette) {
  const int index = std::clamp(colourIndex, 1, kColours);
  if (index == kColours) {
    return palette.color(QPalette::Text);  // the table's white, seen on any ground
  }
  const QColor colour = FromTable(ColourTable[static_cast<std::size_t>(index)]);
  if (IsDarkGround(palette)) {
    return colour.lightnessF() < 0.45 ? colour.lighter(150) : colour;
  }
  float hue = 0;
  float saturation = 0;
  float lightness = 0;
  colour.getHslF(&hue, &saturation, &lightness);
  return QColor::fromHslF(std::max(hue, 0.0F), std::min(1.0F, saturation * 1.1F), std::min(lightness, 0.42F));
}

void PaintSwatch(QPainter& painter, const QRect& area, const QColor& colour) {
  constexpr double side = 11.0;
  const QPointF centre = QRectF(area).center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawRoundedRect(QRectF(centre.x() - side / 2, centre.y() - side / 2, side, side), 3, 3);
  painter.restore();
}

QIcon SwatchIcon(int colourIndex, const QPalette& palette) {
  constexpr int side = 13;
  const double ratio = qApp->devicePixelRatio();
  QPixmap picture(QSize(side, side) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  PaintSwatch(painter, QRect(0, 0, side, side), ChannelColour(colourIndex, palette));
  painter.end();
  QIcon icon(picture);
  icon.addPixmap(picture, QIcon::Selected);  // not tinted as a row is
  return icon;
}

void PaintTrace(QPainter& painter, const QRect& area, const Trial& trial, const ChannelTraces& traces,
                int channel, const QPalette& palette) {
  PaintSelection(painter, area, trial, palette);
  const Extremes whole = traces.Whole(channel);
  if (whole.Empty() || area.width() < 4) {
    return;
  }
  const double ratio = painter.device()->devicePixelRatioF();
  const int columns = static_cast<int>(std::min(area.width() * ratio, static_cast<double>(trial.NData)));
  const std::vector<Extremes> extremes = traces.Columns(channel, columns);
  const QRectF inner = QRectF(area).adjusted(0, 4, 0, -4);
  const Ordinate ordinate(whole, inner);
  const double step = inner.width() / columns;
  // A band from the minima to the maxima of the columns: a line where samples are few.
  QPolygonF band;
  QPolygonF lower;
  for (int k = 0; k < columns; ++k) {
    const Extremes& column = extremes[static_cast<std::size_t>(k)];
    if (!column.Empty()) {
      const double x = inner.left() + (k + 0.5) * step;
      band << QPointF(x, ordinate.At(column.max));
      lower.prepend(QPointF(x, ordinate.At(column.min)));
    }
  }
  band += lower;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor colour = ChannelColour(trial.ChanColour[channel], palette);
  painter.setPen(QPen(colour, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(colour);
  painter.drawPolygon(band);
  painter.restore();
}

}  // namespace velmora::ui
