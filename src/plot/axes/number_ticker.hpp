#pragma once

#include <qcustomplot.h>

namespace velmora {

/// Round numbers along a linear axis, written as people write them.
class NumberTicker : public QCPAxisTicker {
 public:
  explicit NumberTicker(bool clock) : clock_(clock) {}

  void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) override;

 protected:
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

 private:
  QCPRange range_;
  bool clock_;  // seconds as hh:mm:ss
};

/// Powers of ten along a logarithmic axis.
class DecadeTicker : public QCPAxisTickerLog {
 protected:
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;
};

}  // namespace velmora
