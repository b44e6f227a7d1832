#include "ui/graph/multi_window.hpp"

#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSplitter>

#include "graph/threshold_lines.hpp"
#include "ui/graph/event_table.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/multi_sidebar.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

MultiWindow::MultiWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent,
                 {.name = "frmGraph2",
                  .hint = tr("Click a graph first; then 1 or 2 for cursors, wheel to zoom, ? for all keys"),
                  .addMenus = AddMultiMenus,
                  .keys = KeysHeld::All}),
      plot_(new StackWidget),
      scroll_(new QScrollBar(Qt::Vertical)),
      sidebar_(new MultiSidebar),
      events_(new EventTable) {
  AddBar();
  auto* stack = new QWidget;
  auto* layout = new QHBoxLayout(stack);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(plot_, 1);
  layout->addWidget(scroll_);
  scroll_->setObjectName(QStringLiteral("lanes"));
  auto* splitter = new QSplitter;
  splitter->addWidget(stack);
  auto* beside = new QWidget;
  auto* column = new QVBoxLayout(beside);
  column->setContentsMargins({});
  column->setSpacing(0);
  column->addWidget(sidebar_, 2);
  column->addWidget(events_, 1);
  splitter->addWidget(beside);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);
  splitter->setSizes({980, 220});
  setCentralWidget(splitter);
  ConnectPlot();
  ConnectEvents();
  Begin({1200, 800});
}

void MultiWindow::AddBar() {
  QHBoxLayout& bar = bar_.First();
  bar_.Add(bar, {"cmdOK", "E&xit", "view.exit", tr("Closes the graph")});
  bar_.Add(bar, {"mnuSave", "Sa&ve to .VMB", "view.save", tr("Saves what the cursors select"), "F5"});
  bar_.Add(bar, {"cmdSelect", "&Channels", "view.change-channels",
                 tr("Chooses the channels and their graphs"), nullptr, "F8"});
  bar_.AddWindow(bar);
  bar_.Add(bar, {"mnuResets", "&Reset", "zoom.reset-all", tr("Draws the trial as at first"), "F2"});
  bar.addStretch(1);
  bar_.AddModes(bar_.Second(), true);
  bar_.Second().addStretch(1);
}

void MultiWindow::ConnectPlot() {
  connect(plot_, &StackWidget::cursorDragged, this, &MultiWindow::DragCursor);
  connect(plot_, &StackWidget::thresholdDragged, this, &MultiWindow::DragThreshold);
  connect(plot_, &StackWidget::dragEnded, this, &MultiWindow::EndDrag);
  connect(plot_, &StackWidget::rangeChosen, this, &MultiWindow::ShowRange);
  connect(plot_, &StackWidget::pointed, this,
          [this](double x, double y) { status_->ShowTimePlace(workbench_, x, y); });
  connect(plot_, &StackWidget::clicked, this, &MultiWindow::SelectGraph);
  connect(plot_, &StackWidget::doubleClicked, this, [this](int graph) { Click(graph, Clicked::Twice); });
  connect(plot_, &StackWidget::rightClicked, this, [this](int graph) { Click(graph, Clicked::Right); });
  connect(plot_, &StackWidget::scrolled, this, &MultiWindow::ShowScrolled);
  connect(scroll_, &QScrollBar::valueChanged, this, [this](int first) {
    if (first != plot_->First()) {
      plot_->ScrollTo(first);
      plot_->Redraw();
    }
  });
}

void MultiWindow::ShowScrolled() {
  const int hidden = plot_->Lanes() - plot_->FittingLanes();
  scroll_->setVisible(hidden > 0);
  scroll_->setRange(0, std::max(hidden, 0));
  scroll_->setPageStep(plot_->FittingLanes());
  scroll_->setValue(plot_->First());
}

// While it is dragged only what depends on cursors is drawn; the end of it is the act.
void MultiWindow::DragCursor(int graph, int cursor, double x) {
  MultiView* view = View();
  if (view == nullptr || !std::isfinite(x)) {
    return;
  }
  const bool common = cursor <= view->Cursors();
  dragged_ = {cursor, x, common ? 0 : graph};
  view->MoveCursor(dragged_.cursor, dragged_.x, dragged_.graph);
  sidebar_->Take(*view, workbench_);
}

void MultiWindow::DragThreshold(int graph, double y) {
  if (View() != nullptr && std::isfinite(y)) {
    draggedLine_ = {graph, y};
    View()->MoveThreshold(graph, y);
  }
}

void MultiWindow::EndDrag() {
  const ThresholdMove line = std::exchange(draggedLine_, ThresholdMove{0, 0.0});
  if (View() != nullptr && line.graph > 0) {
    Act(line, [&] { View()->MoveThreshold(line.graph, line.y); });
  }
  const CursorMove move = std::exchange(dragged_, CursorMove{0, 0.0, 0});
  if (View() != nullptr && move.cursor > 0) {
    Act(move, [&] { View()->MoveCursor(move.cursor, move.x, move.graph); });
  }
}

void MultiWindow::ConnectEvents() {
  connect(plot_, &StackWidget::thresholdClicked, this, &MultiWindow::TakeThreshold);
  connect(events_, &EventTable::chosen, this, &MultiWindow::ChooseEvent);
}

// A click on what is selected says nothing new.
void MultiWindow::SelectGraph(int graph) {
  if (View() != nullptr && View()->Selected() != graph) {
    Click(graph, Clicked::Once);
  }
}

// A click on a line that was dragged asks what T asks. Any other only selects: in a low lane the line is
// everywhere.
void MultiWindow::TakeThreshold(int graph) {
  SelectGraph(graph);
  MultiView* view = View();
  const GraphCursor* line = view != nullptr ? ThresholdLineOf(view->GraphAt(graph)) : nullptr;
  if (line != nullptr && line->YPosition != workbench_.thresholds.ChanThreshold[view->ChannelOf(graph)]) {
    const KeyPress key{.name = "T"};
    Act(key, [&] { View()->PressKey(key); });
  }
}

// Record by record, with the keys that go there: so it is heard and written down.
void MultiWindow::ChooseEvent(int event) {
  if (View() == nullptr) {
    return;
  }
  if (View()->Selected() == 0) {
    SelectGraph(View()->ShownGraphs().front());
  }
  while (View() != nullptr && workbench_.events.CurrentEvent != event && event >= 1 &&
         event <= workbench_.events.NEvents()) {
    const KeyPress key{.name = event > workbench_.events.CurrentEvent ? "Home" : "End", .ctrl = true};
    Act(key, [&] { View()->PressKey(key); });
  }
}

void MultiWindow::ShowGraphs() {
  const MultiView& view = *View();
  plot_->SetLanes(LanesOf(view));
  setWindowTitle(ToQt(view.TitleText()) + QStringLiteral("[*]"));
  plot_->SetSelected(view.Selected());
  plot_->Redraw();
  sidebar_->parentWidget()->setVisible(view.Lead().SidebarVisible);
  sidebar_->Take(view, workbench_);
  events_->Take(view, workbench_);
}

// A worn key that comes twice within a twentieth of a second.
bool MultiWindow::IsDoubled(const QKeyEvent& event) {
  constexpr qint64 kMilliseconds = 50;
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  const bool doubled = !event.isAutoRepeat() && event.key() == lastKey_ && now - lastKeyTime_ < kMilliseconds;
  lastKey_ = event.key();
  lastKeyTime_ = now;
  return doubled && View()->FixesDouble();
}

// An arrow is as a drag: to where the cursor came to rest.
bool MultiWindow::TakeKey(const KeyPress& key, const QKeyEvent& event) {
  if (IsDoubled(event)) {
    return true;
  }
  const std::optional<CursorMove> move = View()->ArrowMove(key);
  if (!move || View()->Selected() == 0) {
    return false;
  }
  Act(*move, [&] { View()->MoveCursor(move->cursor, move->x); });
  return true;
}

}  // namespace velmora::ui
