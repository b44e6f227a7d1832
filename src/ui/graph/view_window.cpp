#include "ui/graph/view_window.hpp"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTimer>

#include "app/command_table.hpp"
#include "graph/multi/multi_view.hpp"
#include "plot/drawn_plot.hpp"
#include "plot/range_moves.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/graph/multi_window.hpp"
#include "ui/graph/window_requests.hpp"
#include "ui/graph/xy_window.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

ViewWindow::ViewWindow(Workbench& workbench, Run run, QWidget* parent, const Kind& kind)
    : QMainWindow(parent, Qt::Window),
      workbench_(workbench),
      menus_([this](const Command& command) { RunCommand(command); }),
      bar_(*this, [this](const char* id) { RunById(id); }),
      status_(new GraphStatusBar),
      run_(std::move(run)),
      pictures_(workbench, this, [this] { return Plot().Picture(); }),
      hintText_(kind.hint),
      keys_(kind.keys) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QString::fromLatin1(kind.name));
  kind.addMenus(menus_, menuBar());
  AddFileEntries(menus_.FileMenu());
  setStatusBar(status_);
  ConnectParent();
}

void ViewWindow::Begin(const QSize& size) {
  resize(size);
  Plot().setFocus();
  Refresh();
}

ViewWindow* MakeViewWindow(Workbench& workbench, ViewWindow::Run run, QWidget* parent) {
  if (FindMultiView(workbench) != nullptr) {
    return new MultiWindow(workbench, std::move(run), parent);
  }
  if (FindXYView(workbench) != nullptr) {
    return new XYWindow(workbench, std::move(run), parent);
  }
  return new GraphWindow(workbench, std::move(run), parent);
}

void ViewWindow::ShowGraph() {
  const GraphView* view = View();
  PlaceOver(*this, parentWidget() != nullptr ? *parentWidget() : *this);
  view != nullptr && view->Maximised() ? showMaximized() : show();
  activateWindow();
  ShowHint();
}

// One key goes to the graph and back.
void ViewWindow::ConnectParent() {
  if (parentWidget() == nullptr) {
    return;
  }
  auto* here = new QShortcut(kTurnKey, parentWidget(), this, [this] { ComeForward(*this); });
  connect(this, &QObject::destroyed, here, &QObject::deleteLater);
}

void ViewWindow::RunCommand(const Command& command) {
  const QPointer<ViewWindow> alive(this);  // the command may open a graph of the other kind
  Rest();
  run_(command);
  if (alive != nullptr) {
    Refresh();
  }
}

void ViewWindow::RunById(const char* id) {
  RunCommand(*FindCommand(id));
}

void ViewWindow::Act(const Action& action, const std::function<void()>& work) {
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

void ViewWindow::Click(int graph, Clicked how) {
  Act(GraphClick{graph, how}, [&] { View()->Click(graph, how); });
}

void ViewWindow::ShowRange(int graph, const GraphRange& range) {
  if (GraphView* view = View()) {
    view->ShowRange(graph, range.left, range.right, range.bottom, range.top);
    Plot().Redraw();
  }
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    LeaveMode();
    return;
  }
  const std::optional<KeyPress> key = GraphKey(*event, keys_);
  if (!key || View() == nullptr || TakeKey(*key, *event) || bar_.PressKey(*key)) {
    return;
  }
  Act(*key, [&] {
    if (!View()->PressKey(*key)) {
      event->ignore();
    }
  });
}

// First what the mouse is doing, then what it would do.
void ViewWindow::LeaveMode() {
  if (!Plot().CancelGesture() && View() != nullptr) {
    View()->LeaveMode();
    Refresh();
  }
}

void ViewWindow::Rest() {
  Plot().Clear();
  Plot().Arrange();
}

void ViewWindow::Refresh() {
  GraphView* view = View();
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
  ShowTitle();
  ShowView();
}

void ViewWindow::ShowView() {
  const GraphView& view = *View();
  Plot().SetTitle(ToQt(view.TitleText()));
  Plot().SetTitleTip(ToQt(view.TitleText() + "\n" + workbench_.LoadedFile));
  ShowGraphs();
  menus_.Update(view, workbench_);
  bar_.Show(view);
  status_->ShowMode(view.Lead().Track);
}

void ViewWindow::ShowTitle() {
  const Trial& trial = workbench_.trial;
  setWindowTitle(tr("Graph of %1[*]").arg(ToQt(trial.TrialName.empty() ? trial.FileName : trial.TrialName)));
  setWindowModified(trial.FileChanged);
}

void ViewWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) {
    return;
  }
  if (GraphView* view = View()) {
    view->SetMaximised(isMaximized());
  }
}

void ViewWindow::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  closing_ = true;
  if (View() != nullptr) {
    Rest();
    run_(*FindCommand("view.exit"));
    if (View() != nullptr) {  // called off
      closing_ = false;
      event->ignore();
      Refresh();
      return;
    }
  }
  event->accept();
  Q_EMIT Changed();
}

void ViewWindow::AddFileEntries(QMenu* file) {
  file->addSeparator();
  pictures_.AddEntries(file);
  file->addSeparator();
  if (parentWidget() != nullptr) {
    connect(file->addAction(tr("&Main window"), kTurnKey), &QAction::triggered, this,
            [this] { ComeForward(*parentWidget()); });
  }
  QAction* exit = file->addAction(tr("E&xit"), QKeySequence::Close);
  connect(exit, &QAction::triggered, this, [this] { RunById("view.exit"); });
}

// Where the keys are, for a few seconds at the first graph of a session.
void ViewWindow::ShowHint() {
  constexpr int kMilliseconds = 7000;
  static bool shown = false;
  if (shown) {
    return;
  }
  shown = true;
  hint_ = new QLabel(hintText_, &Plot());
  hint_->setObjectName(QStringLiteral("hint"));
  hint_->setStyleSheet(QStringLiteral(
      "background: rgba(40, 40, 40, 210); color: white; border-radius: 5px; padding: 6px 12px;"));
  Plot().installEventFilter(this);
  hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
  hint_->show();
  QTimer::singleShot(kMilliseconds, hint_, &QObject::deleteLater);
  PlaceHint();
}

void ViewWindow::PlaceHint() {
  constexpr int kAboveTheAxis = 90;
  constexpr int kBeside = 8;
  if (hint_ != nullptr) {
    hint_->setWordWrap(false);
    const int whole = hint_->sizeHint().width();
    const int room = Plot().width() - 2 * kBeside;
    hint_->setWordWrap(whole > room);
    hint_->setFixedWidth(std::clamp(room, 1, whole));
    hint_->adjustSize();
    hint_->move((Plot().width() - hint_->width()) / 2, Plot().height() - kAboveTheAxis);
  }
}

// The plot gets narrower without the window when read-outs of cursors come up beside it.
bool ViewWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == &Plot()) {
    PlaceHint();
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace velmora::ui
