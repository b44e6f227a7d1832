#include "ui/graph/one_channel_window.hpp"

#include <QKeyEvent>
#include <QMenuBar>

#include "core/trial/helpers.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/key_names.hpp"
#include "ui/graph/window_requests.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

OneChannelWindow::OneChannelWindow(Workbench& workbench, int channel, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      workbench_(workbench),
      view_(workbench, channel),
      plot_(new GraphWidget),
      pictures_(workbench, this, [this] { return plot_->Picture(); }),
      status_(new GraphStatusBar) {
  constexpr QSize kFirstSize{820, 460};
  setObjectName(QStringLiteral("frmGraph1"));
  setAttribute(Qt::WA_DeleteOnClose);
  view_.onRequest = [this](WindowRequest request) { Obey(request, *this, workbench_); };
  setCentralWidget(plot_);
  setStatusBar(status_);
  AddMenus();
  ConnectPlot();
  plot_->SetGraph(&view_.Drawing());
  resize(kFirstSize);
  plot_->setFocus();
  ShowView();
}

void OneChannelWindow::AddMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  pictures_.AddEntries(file);
  file->addSeparator();
  connect(file->addAction(QStringLiteral("E&xit"), QKeySequence::Close), &QAction::triggered, this,
          &QWidget::close);
  AddBackgrounds();
  AddPanAndZoom();
  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  connect(help->addAction(QStringLiteral("&Keyboard functions (?)")), &QAction::triggered, this,
          [this] { ShowOneChannelKeys(workbench_); });
}

void OneChannelWindow::AddBackgrounds() {
  QMenu* menu = menuBar()->addMenu(QStringLiteral("&Background"));
  for (const BackgroundChoice& choice : kBackgrounds) {
    QAction* action = menu->addAction(ToQt(choice.caption));
    action->setCheckable(true);
    backgrounds_.emplace_back(choice.colour, action);
    connect(action, &QAction::triggered, this, [this, colour = choice.colour] {
      view_.SetBackground(colour);
      ShowView();
    });
  }
}

void OneChannelWindow::AddPanAndZoom() {
  QMenu* menu = menuBar()->addMenu(QStringLiteral("Pan and &Zoom"));
  connect(menu->addAction(QStringLiteral("&Reset scaling")), &QAction::triggered, this, [this] {
    view_.ResetScaling();
    ShowView();
  });
  menu->addSeparator();
  AddMode(menu, "&Pan X && Y", TrackMode::PanXAndY);
  AddMode(menu, "Pan &X only", TrackMode::PanX);
  AddMode(menu, "Pan &Y only", TrackMode::PanY);
  AddMode(menu, "&Zoom mode", TrackMode::ZoomArea);
}

void OneChannelWindow::AddMode(QMenu* menu, const char* caption, TrackMode mode) {
  QAction* action = menu->addAction(QString::fromLatin1(caption));
  action->setCheckable(true);
  modes_.emplace_back(mode, action);
  connect(action, &QAction::triggered, this, [this, mode](bool on) {
    view_.SetTrack(on ? mode : TrackMode::None);
    ShowView();
  });
}

void OneChannelWindow::ConnectPlot() {
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) {
    view_.ShowRange(range.left, range.right, range.bottom, range.top);
    plot_->Redraw();
  });
  connect(plot_, &GraphWidget::pointed, this,
          [this](double x, double y) { status_->ShowTimePlace(workbench_, x, y); });
  connect(plot_, &GraphWidget::doubleClicked, this, [this] {
    view_.Click(1, Clicked::Twice);
    ShowView();
  });
}

void OneChannelWindow::Refresh() {
  std::string fault;
  try {
    if (view_.TrialChanged()) {
      ShowView();
      return;
    }
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  }
  plot_->SetGraph(nullptr);
  plot_->Arrange();
  close();
  if (!fault.empty()) {
    ShowFailure(workbench_, {.title = "Graph", .text = fault, .icon = Icon::Stop});
  }
}

void OneChannelWindow::ShowView() {
  const Graph& graph = view_.Drawing();
  setWindowTitle(ToQt(view_.Title()));
  plot_->SetTitle(ToQt(graph.Title));
  plot_->Redraw();
  status_->ShowMode(graph.Track);
  for (const auto& [colour, action] : backgrounds_) {
    action->setChecked(graph.Background == colour);
  }
  for (const auto& [mode, action] : modes_) {
    action->setChecked(graph.Track == mode);
  }
}

void OneChannelWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    if (!plot_->CancelGesture()) {
      view_.SetTrack(TrackMode::None);
      ShowView();
    }
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event);
  if (!key || !view_.PressKey(*key)) {
    event->ignore();
    return;
  }
  ShowView();
}

}  // namespace velmora::ui
