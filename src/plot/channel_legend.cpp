#include "plot/channel_legend.hpp"

#include <algorithm>

#include "graph/graph.hpp"
#include "plot/plot_colours.hpp"
#include "plot/traces/point_marks.hpp"
#include "plot/traces/trace_raster.hpp"

namespace velmora {
namespace {

constexpr int kSample = 22;  // the piece of line
constexpr int kItemGap = 6;

QString TextOf(const Trial& trial, const Plot& plot) {
  return QString::fromStdString(LabelWithUnits(plot.Name, trial.ChanUnits[plot.Channel].Text()));
}

}  // namespace

ChannelLegend::ChannelLegend(QCustomPlot* plot) : QCPLayoutElement(plot) {
  setLayer("legend");
  setMargins({kItemGap, kItemGap, kItemGap, kItemGap});
}

void ChannelLegend::Show(const Graph* graph, Colour background) {
  background_ = background;
  entries_.clear();
  if (graph == nullptr || graph->Plotted() == nullptr) {
    return;
  }
  for (const Plot& plot : graph->Plots) {
    if (plot.Visible) {
      entries_.push_back({&plot, TextOf(*graph->Plotted(), plot)});
    }
  }
  byTime_ = graph->Path && graph->Path->ColourByTime;
  if (byTime_) {
    entries_.push_back({nullptr, QString::fromStdString(graph->Path->From + " to " + graph->Path->To)});
  }
}

QFont ChannelLegend::Font() const {
  return mParentPlot->font();
}

int ChannelLegend::RowHeight() const {
  return QFontMetrics(Font()).height() + 3;
}

int ChannelLegend::Rows() const {
  const int room = mParentPlot->viewport().height() - 80;
  return std::clamp(room / RowHeight(), 1, std::max(static_cast<int>(entries_.size()), 1));
}

int ChannelLegend::ColumnWidth() const {
  const QFontMetrics metrics(Font());
  int widest = 0;
  for (const Entry& entry : entries_) {
    widest = std::max(widest, metrics.horizontalAdvance(entry.text));
  }
  return kSample + kItemGap + std::min(widest, mParentPlot->viewport().width() / 5) + 2 * kItemGap;
}

QSize ChannelLegend::minimumOuterSizeHint() const {
  if (entries_.empty()) {
    return {0, 0};
  }
  const int rows = Rows();
  const int columns = (static_cast<int>(entries_.size()) + rows - 1) / rows;
  return {columns * ColumnWidth() + 2 * kItemGap, rows * RowHeight() + 2 * kItemGap};
}

QSize ChannelLegend::maximumOuterSizeHint() const {
  return {minimumOuterSizeHint().width(), QWIDGETSIZE_MAX};
}

void ChannelLegend::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(true);
}

void ChannelLegend::draw(QCPPainter* painter) {
  const int rows = Rows();
  int k = 0;
  for (const Entry& entry : entries_) {
    const QPoint corner = mRect.topLeft() + QPoint(k / rows * ColumnWidth(), k % rows * RowHeight());
    DrawEntry(*painter, entry, {corner, QSize(ColumnWidth(), RowHeight())});
    ++k;
  }
}

void ChannelLegend::DrawTimeColours(QCPPainter& painter, const QPointF& middle) const {
  constexpr int kStops = 8;
  constexpr int kHigh = 8;
  const QRectF bar(middle - QPointF(kSample / 2.0, kHigh / 2.0), QSizeF(kSample, kHigh));
  QLinearGradient colours(bar.topLeft(), bar.topRight());
  for (int k = 0; k <= kStops; ++k) {
    const double part = 1.0 * k / kStops;
    colours.setColorAt(part, TraceColour({.LineColor = TimeColour(part)}, background_));
  }
  painter.fillRect(bar, colours);
}

void ChannelLegend::DrawEntry(QCPPainter& painter, const Entry& entry, const QRect& rect) const {
  const QPointF middle(rect.left() + kSample / 2.0, rect.center().y() + 0.5);
  if (byTime_) {
    if (entry.plot != nullptr) {
      DrawTimeColours(painter, middle);
    }
  } else {
    DrawLine(painter, *entry.plot, middle);
  }
  painter.setFont(Font());
  painter.setPen(Foreground(background_));
  const QRect textRect = rect.adjusted(kSample + kItemGap, 0, -kItemGap, 0);
  const QString text = QFontMetrics(Font()).elidedText(entry.text, Qt::ElideRight, textRect.width());
  painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter, text);
}

void ChannelLegend::DrawLine(QCPPainter& painter, const Plot& plot, const QPointF& middle) const {
  const QColor colour = TraceColour(plot, background_);
  if (plot.Bars) {
    painter.fillRect(QRectF(middle - QPointF(kSample / 2.0, 4), QSizeF(kSample, 8)), colour);
  } else if (plot.Line != LineStyle::None) {
    QPen pen(colour, std::max(plot.LineWidth, 2.0));
    const std::vector<int> lengths = DashLengths(plot.Line);
    if (!lengths.empty()) {
      pen.setDashPattern(QList<qreal>(lengths.begin(), lengths.end()));
      pen.setCapStyle(Qt::FlatCap);
      pen.setWidthF(std::max(plot.LineWidth, 1.0));
    }
    painter.setPen(pen);
    painter.drawLine(QLineF(middle - QPointF(kSample / 2.0, 0), middle + QPointF(kSample / 2.0, 0)));
  }
  PointMark(plot.Point, colour).Draw(painter, middle);
}

}  // namespace velmora
