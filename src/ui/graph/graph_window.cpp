#include "ui/graph/graph_window.hpp"

#include <QLabel>
#include <QPushButton>
#include <QSplitter>

#include "core/trial/abscissa.hpp"
#include "ui/graph/arrow_pan.hpp"
#include "ui/graph/cursor_values.hpp"
#include "ui/graph/graph_sidebar.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

GraphWindow::GraphWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent,
                 {.name = "frmGraph",
                  .hint = tr("1 or 2 for cursors, wheel to zoom, ? for all keys"),
                  .addMenus = AddSingleMenus}),
      plot_(new GraphWidget),
      sidebar_(new GraphSidebar),
      values_(new CursorValuesPanel(this)) {
  AddBar();
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
  Begin({1200, 760});
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
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) { ShowRange(1, range); });
  connect(plot_, &GraphWidget::pointed, this,
          [this](double x, double y) { status_->ShowTimePlace(workbench_, x, y); });
  connect(plot_, &GraphWidget::clicked, this, [this] { Click(1, Clicked::Once); });
  connect(plot_, &GraphWidget::doubleClicked, this, [this] { Click(1, Clicked::Twice); });
  connect(plot_, &GraphWidget::rightClicked, this, [this] { Click(1, Clicked::Right); });
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

void GraphWindow::ShowGraphs() {
  SingleView* view = View();
  view->onRedraw = [this](SingleView::Redraw what) { DrawBeside(what); };
  plot_->SetGraph(&view->Drawing());
  plot_->Redraw();
  sidebar_->setVisible(view->Drawing().SidebarVisible);
  sidebar_->Rebuild(*view, workbench_);
  FitSidebar();
  values_->Show(view->Values(), workbench_);
  ShowState(*view);
}

void GraphWindow::ShowState(const SingleView& view) {
  bar_.Caption(*pointsButton_, ToQt(view.PointsCaption()));
  trial_->setText(ToQt(workbench_.trial.TrialName));
  countCaption_->setText(view.Cursors() == 1 ? tr("Datum:") : tr("# data:"));
  intervalCaption_->setText(view.Cursors() == 1 ? tr("Time:") : tr("Interval:"));
  count_->setText(ToQt(view.CountText()));
  interval_->setText(ToQt(view.IntervalText()));
}

// With a cursor the arrows move the one that was moved last, by a pixel or a sample, whichever is more,
// with shift ten times as far; without one they pan.
bool GraphWindow::TakeKey(const KeyPress& key, const QKeyEvent& /*event*/) {
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
  const double sample = workbench_.trial.Rate > 0 ? 1 / SamplesPerUnit(workbench_.trial) : pixel;
  const CursorMove move{active_, view.Drawing().Cursors[static_cast<std::size_t>(active_ - 1)].XPosition +
                                     sign * std::max(pixel, sample)};
  Act(move, [&] { view.MoveCursor(move.cursor, move.x); });
  return true;
}

}  // namespace velmora::ui
