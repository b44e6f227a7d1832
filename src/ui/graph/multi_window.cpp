#include "ui/graph/multi_window.hpp"

#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QToolBar>

#include "core/text/numbers.hpp"
#include "graph/threshold_lines.hpp"
#include "plot/stack_widget.hpp"
#include "ui/graph/event_table.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/key_names.hpp"
#include "ui/graph/multi_sidebar.hpp"
#include "ui/graph/two_part_bar.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

MultiWindow::MultiWindow(Workbench& workbench, Run run, QWidget* parent)
    : ViewWindow(workbench, std::move(run), parent),
      plot_(new StackWidget),
      scroll_(new QScrollBar(Qt::Vertical)),
      sidebar_(new MultiSidebar),
      events_(new EventTable),
      status_(new GraphStatusBar),
      pictures_(workbench, this, [this] { return plot_->Picture(); }) {
  setObjectName(QStringLiteral("frmGraph2"));
  menus_ = std::make_unique<GraphMenus>([this](const Command& command) { RunCommand(command); });
  AddMultiMenus(*menus_, menuBar());
  AddFileEntries(menus_->FileMenu(), pictures_);
  AddBar();
  setStatusBar(status_);
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
  resize(1200, 800);
  plot_->setFocus();
  Refresh();
}

MultiWindow::~MultiWindow() = default;

MultiView* MultiWindow::View() const {
  return dynamic_cast<MultiView*>(workbench_.view.get());
}

QString MultiWindow::Hint() const {
  return tr("Click a graph first; then 1 or 2 for cursors, wheel to zoom, ? for all keys");
}

QWidget& MultiWindow::HintPlace() const {
  return *plot_;
}

void MultiWindow::Rest() {
  plot_->SetLanes({});
  plot_->Arrange();
}

void MultiWindow::AddButton(QLayout& bar, const char* name, const QString& caption, const char* id) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QPushButton::clicked, this, [this, id] { RunById(id); });
  bar.addWidget(button);
  if (std::string_view(id) == "view.window") {
    windowButton_ = button;
  }
}

void MultiWindow::AddBar() {
  auto* strip = new TwoPartBar;
  QHBoxLayout& bar = strip->First();
  AddButton(bar, "cmdOK", tr("E&xit"), "view.exit");
  AddButton(bar, "mnuSave", tr("Sa&ve to .VMB"), "view.save");
  AddButton(bar, "cmdSelect", tr("&Channels"), "view.change-channels");
  AddButton(bar, "cmdWindow", tr("&Window"), "view.window");
  AddButton(bar, "mnuResets", tr("&Reset"), "zoom.reset-all");
  bar.addStretch(1);
  struct Mode {
    TrackMode mode;
    const char* caption;
    const char* id;
  };
  const Mode modes[] = {{TrackMode::None, "&None", "zoom.disable"},
                        {TrackMode::DragCursors, "&Cursor", "zoom.cursor"},
                        {TrackMode::ZoomArea, "&Zoom", "zoom.area"},
                        {TrackMode::PanXAndY, "&Pan", "zoom.pan"}};
  for (const Mode& mode : modes) {
    AddButton(strip->Second(), "mode", QString::fromLatin1(mode.caption), mode.id);
    auto* button = qobject_cast<QPushButton*>(strip->Second().itemAt(strip->Second().count() - 1)->widget());
    button->setCheckable(true);
    modes_.emplace_back(mode.mode, button);
  }
  strip->Second().addStretch(1);
  auto* tools = new QToolBar(tr("Graph"));
  tools->setObjectName(QStringLiteral("graphBar"));
  tools->setMovable(false);
  tools->setContextMenuPolicy(Qt::PreventContextMenu);
  tools->addWidget(strip);
  addToolBar(tools);
}

void MultiWindow::ConnectPlot() {
  connect(plot_, &StackWidget::cursorDragged, this, &MultiWindow::DragCursor);
  connect(plot_, &StackWidget::thresholdDragged, this, &MultiWindow::DragThreshold);
  connect(plot_, &StackWidget::dragEnded, this, &MultiWindow::EndDrag);
  connect(plot_, &StackWidget::rangeChosen, this, [this](int graph, const GraphRange& range) {
    if (MultiView* view = View()) {
      view->ShowRange(graph, range.left, range.right, range.bottom, range.top);
      plot_->Redraw();
    }
  });
  connect(plot_, &StackWidget::pointed, this, [this](double x, double y) {
    status_->ShowPlace(ToQt(AbscissaText(workbench_, x, workbench_.patterns.TimePattern)),
                       ToQt(FormatNumber(y, workbench_.patterns.ValuePattern)));
  });
  connect(plot_, &StackWidget::clicked, this, &MultiWindow::SelectGraph);
  connect(plot_, &StackWidget::doubleClicked, this, [this](int graph) {
    Act(GraphClick{graph, Clicked::Twice}, [this, graph] { View()->DoubleClick(graph); });
  });
  connect(plot_, &StackWidget::rightClicked, this, [this](int graph) {
    Act(GraphClick{graph, Clicked::Right}, [this, graph] { View()->RightClick(graph); });
  });
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
    Act(GraphClick{graph, Clicked::Once}, [this, graph] { View()->Click(graph); });
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

void MultiWindow::ShowView() {
  const MultiView& view = *View();
  plot_->SetLanes(LanesOf(view));
  plot_->SetTitle(ToQt(view.TitleText()));
  setWindowTitle(ToQt(view.TitleText()) + QStringLiteral("[*]"));
  plot_->SetSelected(view.Selected());
  plot_->Redraw();
  sidebar_->parentWidget()->setVisible(view.Lead().SidebarVisible);
  sidebar_->Take(view, workbench_);
  events_->Take(view, workbench_);
  menus_->Update(view, workbench_);
  windowButton_->setText(ToQt(view.WindowCaption()));
  for (const auto& [mode, button] : modes_) {
    button->setChecked(view.Lead().Track == mode);
  }
  status_->ShowMode(view.Lead().Track);
}

// A worn key that comes twice within a twentieth of a second.
bool MultiWindow::IsDoubled(const QKeyEvent& event) {
  constexpr qint64 kMilliseconds = 50;
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  const bool doubled = !event.isAutoRepeat() && event.key() == lastKey_ && now - lastKeyTime_ < kMilliseconds;
  lastKey_ = event.key();
  lastKeyTime_ = now;
  return doubled && View() != nullptr && View()->FixesDouble();
}

void MultiWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    LeaveMode();
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event, KeysHeld::All);
  if (!key || View() == nullptr || IsDoubled(*event)) {
    return;
  }
  if (const std::optional<CursorMove> move = View()->ArrowMove(*key); move && View()->Selected() > 0) {
    Act(*move, [&] { View()->MoveCursor(move->cursor, move->x); });  // as a drag: to where it came to rest
    return;
  }
  Act(*key, [&] {
    if (!View()->PressKey(*key)) {
      event->ignore();
    }
  });
}

void MultiWindow::LeaveMode() {
  MultiView* view = View();
  if (plot_->CancelGesture() || view == nullptr) {
    return;
  }
  view->SetTrack(view->Cursors() > 0 ? TrackMode::DragCursors : TrackMode::None);
  Refresh();
}

}  // namespace velmora::ui
