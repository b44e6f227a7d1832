#include "ui/graph/graph_window.hpp"

#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>

#include "app/command_table.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/arrow_pan.hpp"
#include "ui/graph/cursor_values.hpp"
#include "ui/graph/graph_bar.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_sidebar.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/key_names.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
GraphWindow::GraphWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent),
      plot_(new GraphWidget),
      status_(new GraphStatusBar),
      sidebar_(new GraphSidebar),
      values_(new CursorValuesPanel(this)),
      pictures_(workbench, this, [this] { return plot_->Picture(); }) {
  setObjectName(QStringLiteral("frmGraph"));
  menus_ = std::make_unique<GraphMenus>([this](const Command& command) { RunCommand(command); });
  AddSingleMenus(*menus_, menuBar());
  AddFileEntries(menus_->FileMenu(), pictures_);
  AddBar();
  setStatusBar(status_);
  plot_->SetLegend(false);  // the sidebar is one
  auto* splitter = new QSplitter;
  splitter->addWidget(plot_);
  splitter->addWidget(sidebar_);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);
  splitter->setChildrenCollapsible(false);
  connect(splitter, &QSplitter::splitterMoved, this, [this] { sidebarMoved_ = true; });
  setCentralWidget(splitter);
  ConnectPlot();
  resize(1200, 760);
  plot_->setFocus();
  Refresh();
}

GraphWindow::~GraphWindow() = default;

QString GraphWindow::Hint() const {
  return tr("1 or 2 for cursors, wheel to zoom, ? for all keys");
}

QWidget& GraphWindow::HintPlace() const {
  return *plot_;
}

SingleView* GraphWindow::View() const {
  return dynamic_cast<SingleView*>(workbench_.view.get());
}

void GraphWindow::Rest() {
  plot_->SetGraph(nullptr);
  plot_->Arrange();
}

void GraphWindow::ConnectPlot() {
  connect(plot_, &GraphWidget::cursorDragged, this, &GraphWindow::DragCursor);
  connect(plot_, &GraphWidget::dragEnded, this, &GraphWindow::EndDrag);
  connect(plot_, &GraphWidget::crosshairDragged, this, [this](int cursor, double y) {
    if (SingleView* view = View()) {
      view->MoveCrosshair(cursor, y);
    }
  });
  connect(plot_, &GraphWidget::levelDragged, this, [this](int level, double y) {
    if (const SingleView* view = View(); view != nullptr && view->onLevel) {
      view->onLevel(level, y);
    }
  });
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) {
    if (SingleView* view = View()) {
      view->ShowRange(1, range.left, range.right, range.bottom, range.top);
      plot_->Redraw();
    }
  });
  connect(plot_, &GraphWidget::pointed, this, [this](double x, double y) {
    status_->ShowPlace(ToQt(AbscissaText(workbench_, x, workbench_.patterns.TimePattern)),
                       ToQt(FormatNumber(y, workbench_.patterns.ValuePattern)));
  });
  connect(plot_, &GraphWidget::clicked, this, [this] {
    Act(GraphClick{1, Clicked::Once}, [this] { View()->Click(1); });
  });
  connect(plot_, &GraphWidget::doubleClicked, this, [this] {
    Act(GraphClick{1, Clicked::Twice}, [this] { View()->DoubleClick(1); });
  });
  connect(plot_, &GraphWidget::rightClicked, this, [this] {
    Act(GraphClick{1, Clicked::Right}, [this] { View()->RightClick(1); });
  });
  connect(values_, &CursorValuesPanel::Closed, this, [this] { RunById("cursor.values"); });
}

// While it is dragged only what depends on cursors is drawn; the end of it is the act.
void GraphWindow::DragCursor(int cursor, double x) {
  SingleView* view = View();
  if (view == nullptr || cursor > view->Cursors() || !std::isfinite(x)) {
    return;
  }
  view->MoveCursor(cursor, x);
  dragged_ = active_ = cursor;
  ShowCursors();
}

void GraphWindow::EndDrag() {
  SingleView* view = View();
  if (view == nullptr || dragged_ < 1 || dragged_ > view->Cursors()) {
    return;
  }
  const CursorMove move{std::exchange(dragged_, 0),
                        view->Drawing().Cursors[static_cast<std::size_t>(active_ - 1)].XPosition};
  Act(move, [&] { view->MoveCursor(move.cursor, move.x); });
}

// As wide as what stands in it, until somebody has moved its edge.
void GraphWindow::FitSidebar() {
  auto* splitter = qobject_cast<QSplitter*>(centralWidget());
  if (!sidebarMoved_ && splitter != nullptr && splitter->width() > 0) {
    const int wanted = std::min(sidebar_->NeededWidth(), splitter->width() / 2);
    if (wanted != sidebar_->width()) {
      splitter->setSizes({splitter->width() - wanted, wanted});
    }
  }
}

void GraphWindow::ShowCursors() {
  if (const SingleView* view = View()) {
    sidebar_->Update(*view, workbench_);
    values_->Show(view->Values(), workbench_);
    ShowState(*view);
  }
}

// A dialogue works on the view while a command runs, for which the window has let go of it.
void GraphWindow::DrawBeside(SingleView::Redraw what) {
  const SingleView* view = View();
  if (view == nullptr) {
    return;
  }
  if (what == SingleView::Redraw::All) {
    ShowView();
    return;
  }
  const bool held = plot_->Shows(view->Drawing());
  plot_->SetGraph(&view->Drawing());
  held ? plot_->RedrawCursors() : plot_->Redraw();
}

void GraphWindow::ShowView() {
  SingleView* view = View();
  view->onRedraw = [this](SingleView::Redraw what) { DrawBeside(what); };
  plot_->SetGraph(&view->Drawing());
  plot_->SetTitle(ToQt(view->TitleText()));
  plot_->Redraw();
  sidebar_->setVisible(view->Drawing().SidebarVisible);
  sidebar_->Rebuild(*view, workbench_);
  FitSidebar();
  values_->Show(view->Values(), workbench_);
  menus_->Update(*view, workbench_);
  ShowState(*view);
}

void GraphWindow::ShowState(const SingleView& view) {
  bar_->Caption(*windowButton_, ToQt(view.WindowCaption()));
  bar_->Caption(*pointsButton_, ToQt(view.PointsCaption()));
  trial_->setText(ToQt(workbench_.trial.TrialName));
  countCaption_->setText(view.Cursors() == 1 ? tr("Datum:") : tr("# data:"));
  intervalCaption_->setText(view.Cursors() == 1 ? tr("Time:") : tr("Interval:"));
  count_->setText(ToQt(view.CountText()));
  interval_->setText(ToQt(view.IntervalText()));
  bar_->ShowMode(view.Drawing().Track);
  status_->ShowMode(view.Drawing().Track);
}

void GraphWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    LeaveMode();
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event);
  if (!key || View() == nullptr || StepByArrow(*key) || bar_->PressKey(*key)) {
    return;
  }
  Act(*key, [&] {
    if (!View()->PressKey(*key)) {
      event->ignore();
    }
  });
}

void GraphWindow::LeaveMode() {
  SingleView* view = View();
  if (plot_->CancelGesture() || view == nullptr) {
    return;
  }
  view->Drawing().Track = view->Cursors() > 0 ? TrackMode::DragCursors : TrackMode::None;
  Refresh();
}

// With a cursor the arrows move the one that was moved last, by a pixel or a sample, whichever is more,
// with shift ten times as far; without one they pan.
bool GraphWindow::StepByArrow(const KeyPress& key) {
  constexpr double kFar = 10.0;
  if (key.name != "Left" && key.name != "Right") {
    return false;
  }
  SingleView& view = *View();
  if (view.Cursors() == 0) {
    PanByArrow(view, 1, key, false);
    plot_->Redraw();
    return true;
  }
  const Axis& axis = view.Drawing().Abscissa;
  const double width = axis.Maximum - axis.Minimum;
  const double sign = (key.name == "Left" ? -1 : 1) * (key.shift ? kFar : 1.0);
  active_ = std::clamp(active_, 1, view.Cursors());
  const double pixel = width / std::max(plot_->axisRect()->width(), 1);
  const double sample = workbench_.trial.Rate > 0 ? 1 / workbench_.trial.Rate : pixel;
  const CursorMove move{active_, view.Drawing().Cursors[static_cast<std::size_t>(active_ - 1)].XPosition +
                                     sign * std::max(pixel, sample)};
  Act(move, [&] { view.MoveCursor(move.cursor, move.x); });
  return true;
}

}  // namespace velmora::ui
