#include "ui/graph/xy_window.hpp"

#include <QHBoxLayout>
#include <cmath>

#include "core/text/numbers.hpp"
#include "ui/graph/arrow_pan.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

XYWindow::XYWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent,
                 {.name = "frmXY",
                  .hint = tr("Click a point for its time, wheel to zoom, ? for all keys"),
                  .addMenus = AddXYMenus}),
      plot_(new GraphWidget) {
  AddBar();
  setCentralWidget(plot_);
  ConnectPlot();
  Begin({1000, 760});
}

void XYWindow::AddBar() {
  QHBoxLayout& bar = bar_.First();
  bar_.Add(bar, {"cmdExit", "E&xit", "view.exit", tr("Closes the plot")});
  bar_.Add(bar,
           {"cmdSelect", "&Channels", "view.change-channels", tr("Chooses what is shown"), nullptr, "F8"});
  bar_.AddWindow(bar);
  bar_.Add(bar, {"cmdTable", "&Table", "xy.table", tr("Loop area, length and slope"), "T"});
  bar_.Add(bar, {"cmdReplot", "&Reset", "view.reset", tr("Draws the plot as at first"), "R"});
  bar.addStretch(1);
  bar_.AddModes(bar_.Second(), false);
  bar_.Second().addStretch(1);
}

void XYWindow::ConnectPlot() {
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) { ShowRange(1, range); });
  connect(plot_, &GraphWidget::pointed, this, [this](double x, double y) {
    const XYView* view = View();
    if (view == nullptr || view->PickedSample()) {
      return;  // what was clicked stands there
    }
    const auto number = [this](double value) {
      return ToQt(FormatNumber(value, workbench_.patterns.ValuePattern));
    };
    status_->ShowPlace(number(x), number(y));
  });
  connect(plot_, &GraphWidget::clicked, this, &XYWindow::Pick);
  connect(plot_, &GraphWidget::doubleClicked, this, [this] { Click(1, Clicked::Twice); });
}

// A look at a sample, and no step of what was done.
void XYWindow::Pick(double x, double y) {
  XYView* view = View();
  if (view == nullptr) {
    return;
  }
  const auto pixel = [](const QCPAxis& axis, int pixels) {
    const QCPRange range = axis.range();
    const bool log = axis.scaleType() == QCPAxis::stLogarithmic;
    return (log ? std::log(range.upper / range.lower) : range.size()) / std::max(pixels, 1);
  };
  view->Pick(
      x, y,
      {pixel(*plot_->xAxis, plot_->axisRect()->width()), pixel(*plot_->yAxis, plot_->axisRect()->height())});
  ShowView();
}

void XYWindow::ShowGraphs() {
  const XYView* view = View();
  plot_->SetGraph(&view->Drawing());
  plot_->Redraw();
  status_->ShowText(ToQt(view->PickedText()));
}

bool XYWindow::TakeKey(const KeyPress& key, const QKeyEvent& /*event*/) {
  const bool panned = PanByArrow(*View(), 1, key, true);
  if (panned) {
    plot_->Redraw();
  }
  return panned;
}

}  // namespace velmora::ui
