// How the grid of samples looks.
#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "data/sample_cell.hpp"
#include "ui/data/sample_grid.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"
#include "ui/trial/channel_drawing.hpp"

namespace velmora::ui {
namespace {

constexpr int kColour = 3;  // pixels of the channel's colour above its head

// Of the rows between the cursors.
QColor TintOf(const QPalette& palette) {
  QColor tint = palette.color(QPalette::Highlight);
  tint.setAlphaF(0.13F);
  return tint;
}

}  // namespace

void SampleGrid::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  const QRect all = viewport()->rect();
  painter.fillRect(all, palette().color(QPalette::Base));
  const int first = verticalScrollBar()->value();
  const int rows = std::min<std::int32_t>(WholeRows() + 1, Samples() - first);
  const int columns = std::min(WholeColumns() + 1, Channels() - horizontalScrollBar()->value());
  const int lastChannel = horizontalScrollBar()->value() + columns;
  for (int row = 0; row < rows; ++row) {
    PaintRow(painter, first + row + 1, lastChannel);
  }
  painter.fillRect(QRect(0, 0, all.width(), headHeight_), palette().color(QPalette::Window));
  for (int channel = lastChannel; rows > 0 && channel >= 0; --channel) {
    if (channel == 0 || channel > horizontalScrollBar()->value()) {
      PaintHead(painter, channel);
    }
  }
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(QRect(kPad, 0, sampleWidth_ - 2 * kPad, headHeight_), Qt::AlignRight | Qt::AlignVCenter,
                   tr("Sample"));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawLine(0, headHeight_ - 1, all.width(), headHeight_ - 1);
  painter.drawLine(FrozenWidth() - 1, 0, FrozenWidth() - 1, headHeight_ + rows * rowHeight_);
  if (rows > 0 && hasFocus()) {
    PaintFrame(painter, current_);
  }
}

void SampleGrid::PaintRow(QPainter& painter, std::int32_t sample, int lastChannel) const {
  const Trial& trial = workbench_.trial;
  const bool whole = trial.CursorLo <= 1 && trial.CursorHi >= trial.NData;
  const bool between = !whole && sample >= trial.CursorLo && sample <= trial.CursorHi;
  const int top = headHeight_ + (sample - 1 - verticalScrollBar()->value()) * rowHeight_;
  const QRect number(0, top, sampleWidth_, rowHeight_);
  for (int channel = horizontalScrollBar()->value() + 1; channel <= lastChannel; ++channel) {
    PaintCell(painter, {sample, channel}, between);
  }
  PaintCell(painter, {sample, 0}, between);
  painter.fillRect(number, palette().color(QPalette::Window));
  if (between) {
    painter.fillRect(number, TintOf(palette()));
  }
  painter.setPen(QuietColour(palette()));
  painter.drawText(number.adjusted(kPad, 0, -kPad, 0), Qt::AlignRight | Qt::AlignVCenter,
                   ToQt(FormatCount(sample)));
  painter.setPen(palette().color(QPalette::Midlight));
  painter.drawLine(0, top + rowHeight_ - 1, ColumnLeft(lastChannel) + ColumnWidth(lastChannel),
                   top + rowHeight_ - 1);
}

void SampleGrid::PaintCell(QPainter& painter, const GridCell& cell, bool tinted) const {
  const QRect rect = CellRect(cell);
  static const char* const kViews = "QAbstractItemView";  // whose selection leaves texts readable
  const bool selected = Selected().Holds(cell);
  if (selected) {
    painter.fillRect(rect, QApplication::palette(kViews).color(QPalette::Highlight));
  } else if (tinted) {
    painter.fillRect(rect, TintOf(palette()));
  }
  painter.setPen(palette().color(QPalette::Midlight));
  painter.drawLine(rect.topRight(), rect.bottomRight());
  const float value = workbench_.trial.matrix.At(cell.sample, cell.channel);
  const QColor text = palette().color(QPalette::Text);
  painter.setPen(!std::isfinite(value) ? WarningColour(palette())
                 : cell.channel == 0   ? QuietColour(palette())
                                       : text);
  painter.drawText(rect.adjusted(kPad, 0, -kPad, 0), Qt::AlignRight | Qt::AlignVCenter, CellText(cell));
}

void SampleGrid::PaintHead(QPainter& painter, int channel) const {
  const Trial& trial = workbench_.trial;
  const QRect rect(ColumnLeft(channel), 0, ColumnWidth(channel), headHeight_);
  const QRect text = rect.adjusted(kPad, 5, -kPad, -5);
  const QString units =
      ToQt(channel == 0 ? AbscissaUnits(workbench_) : OneLine(Trim(trial.ChanUnits[channel].Text())));
  painter.fillRect(rect, palette().color(QPalette::Window));
  if (channel > 0) {
    painter.fillRect(QRect(rect.left(), 0, rect.width() - 1, kColour),
                     ChannelColour(trial.ChanColour[channel], palette()));
  }
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(text, Qt::AlignRight | Qt::AlignTop,
                   fontMetrics().elidedText(ToQt(ColumnName(trial, channel)), Qt::ElideRight, text.width()));
  painter.setPen(QuietColour(palette()));
  painter.drawText(text, Qt::AlignRight | Qt::AlignBottom, units);
  painter.setPen(palette().color(QPalette::Midlight));
  painter.drawLine(rect.topRight(), rect.bottomRight());
}

void SampleGrid::PaintFrame(QPainter& painter, const GridCell& cell) const {
  const QRect rect = CellRect(cell);
  if (rect.top() >= headHeight_) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect.adjusted(1, 1, -2, -2));
  }
}

}  // namespace velmora::ui
