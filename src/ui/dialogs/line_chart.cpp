#include "ui/dialogs/line_chart.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr double kMostSteps = 5.0;

// 1, 2 and 5 of every decade.
std::vector<double> RoundOfDecades(double low, double high) {
  std::vector<double> ticks;
  const int last = static_cast<int>(std::floor(std::log10(high)));
  for (int exponent = static_cast<int>(std::floor(std::log10(low))); exponent <= last; ++exponent) {
    const double decade = std::pow(10.0, exponent);
    for (const double step : {1.0, 2.0, 5.0}) {
      if (decade * step >= low && decade * step <= high) {
        ticks.push_back(decade * step);
      }
    }
  }
  return ticks;
}

// Multiples of a round step, a handful of them.
std::vector<double> RoundMultiples(double low, double high) {
  const double least = (high - low) / kMostSteps;
  const double decade = std::pow(10.0, std::floor(std::log10(least)));
  double step = 10 * decade;
  for (const double round : {5.0, 2.5, 2.0, 1.0}) {
    step = round * decade >= least ? round * decade : step;
  }
  std::vector<double> ticks;
  const auto last = static_cast<std::int64_t>(std::floor(high / step + 1e-9));
  for (auto k = static_cast<std::int64_t>(std::ceil(low / step - 1e-9)); k <= last; ++k) {
    ticks.push_back(static_cast<double>(k) * step);
  }
  return ticks;
}

// Without the last digits that the steps of a binary fraction bring.
QString NumberText(double value) {
  return ToQt(PlainNumber(std::round(value * 1e6) / 1e6));
}

}  // namespace

QPointF LineChart::At(double x, double y) const {
  const double along =
      logarithmic ? std::log(x / left) / std::log(right / left) : (x - left) / (right - left);
  return {area.left() + area.width() * along, area.bottom() - area.height() * (y - bottom) / (top - bottom)};
}

double LineChart::AbscissaAt(double pixels) const {
  const double along = pixels / area.width();
  return logarithmic ? left * std::pow(right / left, along) : left + (right - left) * along;
}

void LineChart::PaintGrid(QPainter& painter, const QPalette& palette, const QString& units) const {
  painter.fillRect(area, palette.color(QPalette::Base));
  const QColor lines = palette.color(QPalette::Mid);
  const QColor numbers = QuietColour(palette);
  PaintOrdinate(painter, lines, numbers);
  const QFontMetricsF metrics = painter.fontMetrics();
  const double unitsWidth = metrics.horizontalAdvance(units);
  double taken = 0;
  for (const double value : logarithmic ? RoundOfDecades(left, right) : RoundMultiples(left, right)) {
    const double x = At(value, bottom).x();
    painter.setPen(QPen(lines, 0.6));
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const QString text = NumberText(value);
    const double half = metrics.horizontalAdvance(text) / 2;
    if (x - half > taken && x + half < area.right() - unitsWidth - 6) {
      painter.setPen(numbers);
      painter.drawText(QPointF(x - half, area.bottom() + metrics.height()), text);
      taken = x + half + 8;
    }
  }
  painter.setPen(numbers);
  painter.drawText(QPointF(area.right() - unitsWidth, area.bottom() + metrics.height()), units);
}

void LineChart::PaintOrdinate(QPainter& painter, const QColor& lines, const QColor& numbers) const {
  const double line = painter.fontMetrics().height();
  for (const double value : RoundMultiples(bottom, top)) {
    const double y = At(right, value).y();
    painter.setPen(QPen(lines, 0.6));
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    painter.setPen(numbers);
    painter.drawText(QRectF(area.left() - 100, y - line / 2, 94, line), Qt::AlignRight | Qt::AlignVCenter,
                     NumberText(value));
  }
}

}  // namespace velmora::ui
