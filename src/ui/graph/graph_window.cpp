#include "ui/graph/graph_window.hpp"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>

#include "app/command_table.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/cursor_values.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_sidebar.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/key_names.hpp"
#include "ui/graph/window_requests.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
GraphWindow::GraphWindow(Workbench& workbench, Run run, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      workbench_(workbench),
      run_(std::move(run)),
      plot_(new GraphWidget),
      status_(new GraphStatusBar),
      sidebar_(new GraphSidebar),
      values_(new CursorValuesPanel(this)),
      pictures_(workbench, this, *plot_) {
  setObjectName(QStringLiteral("frmGraph"));
  setAttribute(Qt::WA_DeleteOnClose);
  menus_ = std::make_unique<GraphMenus>(menuBar(), [this](const Command& command) { RunCommand(command); });
  AddFileEntries();
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
  ConnectParent();
  resize(1200, 760);
  plot_->setFocus();
  Refresh();
}

GraphWindow::~GraphWindow() = default;

SingleView* GraphWindow::View() const {
  return dynamic_cast<SingleView*>(workbench_.view.get());
}

void GraphWindow::ShowGraph() {
  const SingleView* view = View();
  PlaceOver(*this, parentWidget() != nullptr ? *parentWidget() : *this);
  view != nullptr && view->Maximised() ? showMaximized() : show();
  activateWindow();
  ShowHint();
}

// One key goes to the graph and back.
void GraphWindow::ConnectParent() {
  if (parentWidget() == nullptr) {
    return;
  }
  auto* here = new QShortcut(kTurnKey, parentWidget(), this, [this] { ComeForward(*this); });
  connect(this, &QObject::destroyed, here, &QObject::deleteLater);
}

void GraphWindow::Rest() {
  plot_->SetGraph(nullptr);
  plot_->Arrange();
}

void GraphWindow::RunCommand(const Command& command) {
  Rest();
  run_(command);
  Refresh();
}

void GraphWindow::RunById(const char* id) {
  RunCommand(*FindCommand(id));
}

/// What a person does in the view without a command: heard by whoever writes down what was done, and
/// never the end of the program.
template <typename Work>
void GraphWindow::Act(const Action& action, const Work& work) {
  std::string fault;
  try {
    const ActionScope scope(workbench_.listener, action);
    work();
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  } catch (const std::exception& error) {
    fault = error.what();
  }
  if (!fault.empty()) {
    ShowFailure(workbench_, {.title = "Graph", .text = fault, .icon = Icon::Stop});
  }
  Refresh();
  Q_EMIT Changed();
}

void GraphWindow::ConnectPlot() {
  connect(plot_, &GraphWidget::cursorDragged, this, &GraphWindow::DragCursor);
  connect(plot_, &GraphWidget::dragEnded, this, &GraphWindow::EndDrag);
  connect(plot_, &GraphWidget::crosshairDragged, this, [this](int cursor, double y) {
    if (SingleView* view = View()) {
      view->MoveCrosshair(cursor, y);
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

void GraphWindow::Refresh() {
  SingleView* view = View();
  if (view == nullptr) {
    Rest();
    bound_ = nullptr;
    close();
    return;
  }
  if (bound_ != view) {
    bound_ = view;
    view->onRequest = [this](WindowRequest request) { Obey(request, *this, workbench_); };
  }
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
  const Trial& trial = workbench_.trial;
  setWindowTitle(tr("Graph of %1[*]").arg(ToQt(trial.TrialName.empty() ? trial.FileName : trial.TrialName)));
  setWindowModified(trial.FileChanged);
  Caption(*windowButton_, ToQt(view.WindowCaption()));
  Caption(*pointsButton_, ToQt(view.PointsCaption()));
  trial_->setText(ToQt(trial.TrialName));
  countCaption_->setText(view.Cursors() == 1 ? tr("Datum:") : tr("# data:"));
  intervalCaption_->setText(view.Cursors() == 1 ? tr("Time:") : tr("Interval:"));
  count_->setText(ToQt(view.CountText()));
  interval_->setText(ToQt(view.IntervalText()));
  for (const auto& [mode, button] : modes_) {
    button->setChecked(view.Drawing().Track == mode);
  }
  status_->ShowMode(view.Drawing().Track);
}

void GraphWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    LeaveMode();
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event);
  if (!key || View() == nullptr || StepByArrow(*key) || PressBarKey(*key)) {
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
  constexpr double kPan = 0.1;
  constexpr double kFar = 10.0;
  if (key.name != "Left" && key.name != "Right") {
    return false;
  }
  SingleView& view = *View();
  const Axis& axis = view.Drawing().Abscissa;
  const Axis& ordinate = view.Drawing().Ordinate;
  const double width = axis.Maximum - axis.Minimum;
  const double sign = (key.name == "Left" ? -1 : 1) * (key.shift ? kFar : 1.0);
  if (view.Cursors() == 0) {
    const double step = sign * kPan * width;
    view.ShowRange(1, axis.Minimum + step, axis.Maximum + step, ordinate.Minimum, ordinate.Maximum);
    plot_->Redraw();
    return true;
  }
  active_ = std::clamp(active_, 1, view.Cursors());
  const double pixel = width / std::max(plot_->axisRect()->width(), 1);
  const double sample = workbench_.trial.Rate > 0 ? 1 / workbench_.trial.Rate : pixel;
  const CursorMove move{active_, view.Drawing().Cursors[static_cast<std::size_t>(active_ - 1)].XPosition +
                                     sign * std::max(pixel, sample)};
  Act(move, [&] { view.MoveCursor(move.cursor, move.x); });
  return true;
}

void GraphWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  SingleView* view = View();
  if (event->type() == QEvent::WindowStateChange && view != nullptr) {
    view->SetMaximised(isMaximized());
  }
}

void GraphWindow::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  closing_ = true;
  if (SingleView* view = View()) {
    view->onRequest = nullptr;
    Rest();
    run_(*FindCommand("view.exit"));
    CloseView(workbench_);  // whatever became of the command
  }
  event->accept();
  Q_EMIT Changed();
}

}  // namespace velmora::ui
