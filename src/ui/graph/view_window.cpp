#include "ui/graph/view_window.hpp"

#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QTimer>

#include "app/command_table.hpp"
#include "graph/multi/multi_view.hpp"
#include "ui/graph/graph_pictures.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/graph/multi_window.hpp"
#include "ui/graph/window_requests.hpp"
#include "ui/graph/xy_window.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

ViewWindow::ViewWindow(Workbench& workbench, Run run, QWidget* parent)
    : QMainWindow(parent, Qt::Window), workbench_(workbench), run_(std::move(run)) {
  setAttribute(Qt::WA_DeleteOnClose);
  ConnectParent();
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

GraphView* ViewWindow::View() const {
  return Fits() ? dynamic_cast<GraphView*>(workbench_.view.get()) : nullptr;
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

void ViewWindow::ShowTitle() {
  const Trial& trial = workbench_.trial;
  setWindowTitle(tr("Graph of %1[*]").arg(ToQt(trial.TrialName.empty() ? trial.FileName : trial.TrialName)));
  setWindowModified(trial.FileChanged);
}

void ViewWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  GraphView* view = View();
  if (event->type() == QEvent::WindowStateChange && view != nullptr) {
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

void ViewWindow::AddFileEntries(QMenu* file, GraphPictures& pictures) {
  file->addSeparator();
  pictures.AddEntries(file);
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
  hint_ = new QLabel(Hint(), &HintPlace());
  hint_->setObjectName(QStringLiteral("hint"));
  hint_->setStyleSheet(QStringLiteral(
      "background: rgba(40, 40, 40, 210); color: white; border-radius: 5px; padding: 6px 12px;"));
  hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
  hint_->adjustSize();
  hint_->show();
  QTimer::singleShot(kMilliseconds, hint_, &QObject::deleteLater);
  PlaceHint();
}

void ViewWindow::PlaceHint() {
  constexpr int kAboveTheAxis = 90;
  if (hint_ != nullptr) {
    hint_->move((HintPlace().width() - hint_->width()) / 2, HintPlace().height() - kAboveTheAxis);
  }
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  PlaceHint();
}

}  // namespace velmora::ui
