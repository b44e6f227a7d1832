#include "plot/axes/number_ticker.hpp"

#include "plot/axes/tick_text.hpp"

namespace velmora {

// NOLINTNEXTLINE(readability-function-size): the plot library's signature
void NumberTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                            QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
  range_ = range;
  QCPAxisTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
}

QString NumberTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/,
                                   int /*precision*/) {
  if (clock_) {
    return QString::fromStdString(ClockTickText(tick, getTickStep(range_)));
  }
  const double largest = std::max(std::abs(range_.lower), std::abs(range_.upper));
  return QString::fromStdString(TickText(tick, getTickStep(range_), largest));
}

QString DecadeTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/,
                                   int /*precision*/) {
  return QString::fromStdString(DecadeText(tick));
}

}  // namespace velmora
