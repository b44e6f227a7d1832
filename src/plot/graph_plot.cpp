#include "plot/graph_plot.hpp"

#include "plot/axes/arrange_axis.hpp"
#include "plot/axes/drawn_axes.hpp"
#include "plot/channel_legend.hpp"
#include "plot/cursor_overlay.hpp"
#include "plot/plot_colours.hpp"
#include "plot/preview_overlay.hpp"
#include "plot/result_marks.hpp"
#include "plot/traces/trace_plottable.hpp"

namespace velmora {
namespace {

// Pixels from one numeral to the next, about.
constexpr int kBetweenNumerals = 110;
constexpr int kBetweenRows = 55;

}  // namespace

// The plot library's layouts and layers delete what is made here.
GraphPlot::GraphPlot(QWidget* parent) : DrawnPlot(parent) {
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
  preview_ = new PreviewOverlay(this, axisRect());
  cursors_ = new CursorOverlay(this, axisRect());
  connect(this, &QCustomPlot::afterLayout, this, &GraphPlot::FitScales);
  Arrange();
}

// How many pixels the axes have is known when everything beside them has its place, and the numerals of the
// ranges found may be of another width.
void GraphPlot::FitScales() {
  if (graph_ == nullptr || !graph_->EqualScales) {
    return;
  }
  const auto fit = [this] {
    const auto [abscissa, ordinate] = AxesOn(*graph_, axisRect()->width(), axisRect()->height());
    xAxis->setRange(abscissa.Minimum, abscissa.Maximum);
    yAxis->setRange(ordinate.Minimum, ordinate.Maximum);
    plotLayout()->update(QCPLayoutElement::upPreparation);
  };
  fit();
  plotLayout()->update(QCPLayoutElement::upMargins);
  plotLayout()->update(QCPLayoutElement::upLayout);
  fit();
}

void GraphPlot::Arrange() {
  const Colour background = Background();
  setBackground(QBrush(ToQColor(background)));
  traces_->Show(graph_, background);
  marks_->Show(graph_, background);
  preview_->Show(graph_, background);
  cursors_->Show(graph_, background);
  channels_->Show(graph_ != nullptr && legendOn_ && graph_->SidebarVisible ? graph_ : nullptr, background);
  ArrangeTitle();
  if (graph_ != nullptr) {
    const AxisLook look{.font = font(), .background = Background()};
    const auto [abscissa, ordinate] = AxesOn(*graph_, axisRect()->width(), axisRect()->height());
    ArrangeAxis(*xAxis, abscissa, look, viewport().width() / kBetweenNumerals);
    ArrangeAxis(*yAxis, ordinate, look, viewport().height() / kBetweenRows);
  }
}

void GraphPlot::ArrangeTitle() {
  const QString heading = Heading();
  constexpr int kMargins = 16;
  QFont bold = font();
  bold.setBold(true);
  heading_->setFont(bold);
  heading_->setTextColor(Foreground(Background()));
  heading_->setText(QFontMetrics(bold).elidedText(heading, Qt::ElideMiddle, viewport().width() - kMargins));
  heading_->setMargins(heading.isEmpty() ? QMargins(0, 4, 0, 0) : QMargins(4, 8, 4, 2));
}

}  // namespace velmora
