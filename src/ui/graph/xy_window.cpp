#include "ui/graph/xy_window.hpp"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPushButton>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/arrow_pan.hpp"
#include "ui/graph/graph_bar.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/key_names.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

XYWindow::XYWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent),
      plot_(new GraphWidget),
      status_(new GraphStatusBar),
      pictures_(workbench, this, [this] { return plot_->Picture(); }) {
  setObjectName(QStringLiteral("frmXY"));
  menus_ = std::make_unique<GraphMenus>([this](const Command& command) { RunCommand(command); });
  AddXYMenus(*menus_, menuBar());
  AddFileEntries(menus_->FileMenu(), pictures_);
  AddBar();
  setStatusBar(status_);
  setCentralWidget(plot_);
  ConnectPlot();
  resize(1000, 760);
  plot_->setFocus();
  Refresh();
}

XYWindow::~XYWindow() = default;

QString XYWindow::Hint() const {
  return tr("Click a point for its time, wheel to zoom, ? for all keys");
}

QWidget& XYWindow::HintPlace() const {
  return *plot_;
}

XYView* XYWindow::View() const {
  return dynamic_cast<XYView*>(workbench_.view.get());
}

void XYWindow::Rest() {
  plot_->SetGraph(nullptr);
  plot_->Arrange();
}

void XYWindow::AddBar() {
  bar_ = std::make_unique<GraphBar>(*this, [this](const char* id) { RunById(id); });
  QHBoxLayout& bar = bar_->First();
  bar_->Add(bar, {"cmdExit", "E&xit", "view.exit", tr("Closes the plot")});
  bar_->Add(bar,
            {"cmdSelect", "&Channels", "view.change-channels", tr("Chooses what is shown"), nullptr, "F8"});
  windowButton_ = bar_->Add(bar, {"cmdWindow", "&Window", "view.window",
                                  tr("Shows what lies between the cursors, or all of it again"), "W, F"});
  bar_->Add(bar, {"cmdTable", "&Table", "xy.table", tr("Loop area, length and slope"), "T"});
  bar_->Add(bar, {"cmdReplot", "&Reset", "view.reset", tr("Draws the plot as at first"), "R"});
  bar.addStretch(1);
  bar_->AddModes(bar_->Second(), false);
  bar_->Second().addStretch(1);
}

void XYWindow::ConnectPlot() {
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) {
    if (XYView* view = View()) {
      view->ShowRange(1, range.left, range.right, range.bottom, range.top);
      plot_->Redraw();
    }
  });
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
  connect(plot_, &GraphWidget::doubleClicked, this, [this] {
    Act(GraphClick{1, Clicked::Twice}, [this] { View()->DoubleClick(1); });
  });
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

void XYWindow::ShowView() {
  const XYView* view = View();
  plot_->SetGraph(&view->Drawing());
  plot_->SetTitle(ToQt(view->TitleText()));
  plot_->Redraw();
  menus_->Update(*view, workbench_);
  bar_->Caption(*windowButton_, ToQt(view->WindowCaption()));
  bar_->ShowMode(view->Drawing().Track);
  status_->ShowMode(view->Drawing().Track);
  status_->ShowText(ToQt(view->PickedText()));
}

void XYWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    LeaveMode();
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event);
  if (!key || View() == nullptr || bar_->PressKey(*key)) {
    return;
  }
  if (PanByArrow(*View(), 1, *key, true)) {
    plot_->Redraw();
    return;
  }
  Act(*key, [&] {
    if (!View()->PressKey(*key)) {
      event->ignore();
    }
  });
}

// First what the mouse does, then the sample that was clicked.
void XYWindow::LeaveMode() {
  XYView* view = View();
  if (plot_->CancelGesture() || view == nullptr) {
    return;
  }
  if (view->Drawing().Track == TrackMode::None) {
    view->Unpick();
  }
  view->SetTrack(TrackMode::None);
  Refresh();
}

}  // namespace velmora::ui
