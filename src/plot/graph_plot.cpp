#include "plot/graph_plot.hpp"

#include "plot/channel_legend.hpp"
#include "plot/cursor_overlay.hpp"
#include "plot/number_ticker.hpp"
#include "plot/pixel_scale.hpp"
#include "plot/plot_colours.hpp"
#include "plot/result_marks.hpp"
#include "plot/trace_plottable.hpp"

namespace velmora {
namespace {

// Powers of ten alone are too few where the axis spans less than this.
constexpr double kDecadesFrom = 50.0;

}  // namespace

// The plot library's layouts and layers delete what is made here.
GraphPlot::GraphPlot(QWidget* parent) : QCustomPlot(parent) {
  setAutoAddPlottableToLegend(false);
  setInteractions(QCP::iNone);
  legend->setVisible(false);

  heading_ = new QCPTextElement(this);
  channels_ = new ChannelLegend(this);
  plotLayout()->insertRow(0);
  plotLayout()->addElement(0, 0, heading_);
  plotLayout()->addElement(1, 1, channels_);
  plotLayout()->setRowSpacing(0);
  plotLayout()->setColumnSpacing(0);
  axisRect()->setMinimumMargins({12, 8, 18, 8});
  traces_ = new TracePlottable(xAxis, yAxis);
  marks_ = new ResultMarks(this, axisRect());
  cursors_ = new CursorOverlay(this, axisRect());
  Arrange();
}

void GraphPlot::SetGraph(const Graph* graph) {
  graph_ = graph;
}

Colour GraphPlot::Background() const {
  return paper_.value_or(graph_ == nullptr ? kBlack : graph_->Background);
}

std::optional<PictureOrder> GraphPlot::Picture() const {
  if (graph_ == nullptr) {
    return std::nullopt;
  }
  return PictureOrder{.graph = *graph_,
                      .title = title_.toStdString(),
                      .width = std::max(width(), PictureOrder::kSmallest),
                      .height = std::max(height(), PictureOrder::kSmallest)};
}

void GraphPlot::Arrange() {
  const Colour background = Background();
  setBackground(QBrush(ToQColor(background)));
  traces_->Show(graph_, background);
  marks_->Show(graph_, background);
  cursors_->Show(graph_, background);
  channels_->Show(graph_ != nullptr && legendOn_ && graph_->SidebarVisible ? graph_ : nullptr, background);
  ArrangeTitle();
  if (graph_ != nullptr) {
    ArrangeAxis(*xAxis, graph_->Abscissa);
    ArrangeAxis(*yAxis, graph_->Ordinate);
  }
}

void GraphPlot::ArrangeTitle() {
  const bool shown = graph_ != nullptr && graph_->TitleVisible && !title_.isEmpty();
  constexpr int kMargins = 16;
  QFont bold = font();
  bold.setBold(true);
  heading_->setFont(bold);
  heading_->setTextColor(Foreground(Background()));
  const QString fits = QFontMetrics(bold).elidedText(title_, Qt::ElideMiddle, viewport().width() - kMargins);
  heading_->setText(shown ? fits : QString());
  heading_->setMargins(shown ? QMargins(4, 8, 4, 2) : QMargins(0, 4, 0, 0));
}

void GraphPlot::ArrangeAxis(QCPAxis& axis, const Axis& from) const {
  constexpr int kBetweenNumerals = 110;
  constexpr int kBetweenRows = 55;
  const Axis drawn = Drawable(from);
  const QColor foreground = Foreground(Background());
  axis.setScaleType(drawn.Log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  axis.setRange(drawn.Minimum, drawn.Maximum);
  if (drawn.Log && drawn.Maximum / drawn.Minimum >= kDecadesFrom) {
    axis.setTicker(QSharedPointer<DecadeTicker>::create());
  } else {
    const auto ticker = QSharedPointer<NumberTicker>::create(drawn.Clock);
    const bool across = axis.orientation() == Qt::Horizontal;
    ticker->setTickCount(
        std::max(3, across ? viewport().width() / kBetweenNumerals : viewport().height() / kBetweenRows));
    axis.setTicker(ticker);
  }
  axis.setTicks(drawn.LabelsVisible);
  axis.setSubTicks(drawn.LabelsVisible);
  axis.setTickLabels(drawn.LabelsVisible);
  axis.setLabel(drawn.CaptionVisible ? QString::fromStdString(drawn.Caption) : QString());
  axis.setLabelFont(font());
  axis.setTickLabelFont(font());
  for (const auto pen : {&QCPAxis::setBasePen, &QCPAxis::setTickPen, &QCPAxis::setSubTickPen}) {
    (axis.*pen)(QPen(foreground, 1));
  }
  axis.setLabelColor(foreground);
  axis.setTickLabelColor(foreground);
  axis.grid()->setVisible(drawn.MajorGrid);
  const QPen grid(GridColour(drawn, Background()), 1);
  axis.grid()->setPen(grid);
  axis.grid()->setZeroLinePen(grid);
}

}  // namespace velmora
