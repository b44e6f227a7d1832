#include "ui/graph/graph_sidebar.hpp"

#include <QHeaderView>
#include <QPainter>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "plot/plot_colours.hpp"
#include "ui/graph/list_colours.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QIcon Swatch(const QColor& colour, double ratio) {
  constexpr int kSide = 12;
  QPixmap pixmap(QSize(kSide, kSide) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(128, 128, 128), 1));
  painter.setBrush(colour);
  painter.drawRoundedRect(QRectF(0.5, 0.5, kSide - 1, kSide - 1), 2, 2);
  return pixmap;
}

QString NameOf(const Trial& trial, int channel) {
  return ToQt(LabelWithUnits(trial.ChanLabel[channel].Text(), trial.ChanUnits[channel].Text()));
}

}  // namespace

GraphSidebar::GraphSidebar(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("sidebar"));
  setColumnCount(4);
  setHeaderLabels({tr("Channel"), tr("Cursor 1"), tr("Cursor 2"), tr("Difference")});
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setTextElideMode(Qt::ElideMiddle);
  setSelectionMode(NoSelection);
  setFocusPolicy(Qt::NoFocus);  // the keys belong to the graph
  setFrameShape(NoFrame);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setMinimumSectionSize(60);
  header()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  headerItem()->setTextAlignment(0, Qt::AlignLeft | Qt::AlignVCenter);
}

void GraphSidebar::TakeColours(Colour background) {
  if (background == background_) {
    return;
  }
  background_ = background;
  setStyleSheet(ListStyle(background));
}

void GraphSidebar::Rebuild(const SingleView& view, const Workbench& workbench) {
  TakeColours(view.Drawing().Background);
  clear();
  channels_.clear();
  const auto add = [this](const QString& name) {
    auto* item = new QTreeWidgetItem(this, {name});
    for (int column = 1; column < columnCount(); ++column) {
      item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    return item;
  };
  sample_ = add(tr("Sample"));
  const std::string units = Trim(workbench.trial.ChanUnits[0].Text());
  time_ = add(NameOf(workbench.trial, 0));
  reciprocal_ = add(units == "s" ? tr("1 / difference (Hz)") : tr("1 / difference"));
  for (const Plot& plot : view.Drawing().Plots) {
    if (plot.Visible) {
      QTreeWidgetItem* item = add(NameOf(workbench.trial, plot.Channel));
      item->setIcon(0, Swatch(TraceColour(plot, view.Drawing().Background), devicePixelRatioF()));
      item->setToolTip(0, tr("Channel %1: %2").arg(ToQt(ChannelNumber(plot.Channel)), item->text(0)));
      channels_.push_back({plot.Channel, item});
    }
  }
  Update(view, workbench);
}

int GraphSidebar::NeededWidth() const {
  constexpr int kLetters = 34;
  constexpr int kMargins = 8;
  int width = std::min(sizeHintForColumn(0), kLetters * fontMetrics().averageCharWidth()) + kMargins;
  for (int column = 1; column < columnCount(); ++column) {
    if (!isColumnHidden(column)) {
      width += std::max(
          {sizeHintForColumn(column), header()->sectionSizeHint(column), header()->minimumSectionSize()});
    }
  }
  return std::max(width, header()->sectionSizeHint(0)) + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

void GraphSidebar::FillTimes(const SingleView& view, const Workbench& workbench) {
  const std::vector<GraphCursor>& cursors = view.Drawing().Cursors;
  for (int k = 1; k <= 2; ++k) {
    const bool there = view.Cursors() >= k;
    sample_->setText(k, there ? QString::number(view.SampleOf(k)) : QString());
    time_->setText(k, there ? ToQt(AbscissaText(workbench, cursors[static_cast<std::size_t>(k - 1)].XPosition,
                                                workbench.patterns.ValuePattern))
                            : QString());
  }
  const bool both = view.Cursors() >= 2;
  const double between = both ? cursors[1].XPosition - cursors[0].XPosition : 0.0;
  sample_->setText(3, both ? QString::number(view.SampleOf(2) - view.SampleOf(1)) : QString());
  time_->setText(3,
                 both ? ToQt(AbscissaText(workbench, between, workbench.patterns.ValuePattern)) : QString());
  reciprocal_->setText(3, between != 0
                              ? ToQt(FormatNumber(1 / std::abs(between), workbench.patterns.ValuePattern))
                              : QString());
}

void GraphSidebar::Update(const SingleView& view, const Workbench& workbench) {
  const int cursors = std::min(view.Cursors(), 2);
  for (int column = 1; column < columnCount(); ++column) {
    setColumnHidden(column, column == 3 ? cursors < 2 : cursors < column);
  }
  sample_->setHidden(cursors == 0);
  time_->setHidden(cursors == 0);
  reciprocal_->setHidden(cursors < 2);
  FillTimes(view, workbench);
  for (const ChannelRow& row : channels_) {
    double values[2] = {};
    for (int k = 1; k <= cursors; ++k) {
      values[k - 1] = workbench.trial.Data(view.SampleOf(k), row.channel);
      row.item->setText(k, ToQt(FormatNumber(values[k - 1], workbench.patterns.ValuePattern)));
    }
    row.item->setText(3, cursors == 2
                             ? ToQt(FormatNumber(values[1] - values[0], workbench.patterns.ValuePattern))
                             : QString());
  }
}

}  // namespace velmora::ui
