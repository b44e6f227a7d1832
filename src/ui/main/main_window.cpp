#include "ui/main/main_window.hpp"

#include <QCloseEvent>
#include <QDockWidget>
#include <QMenuBar>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <filesystem>

#include "browse/file_commands.hpp"
#include "core/files/paths.hpp"
#include "core/files/start.hpp"
#include "core/text/text.hpp"
#include "ui/browser/browser_panel.hpp"
#include "ui/desktop.hpp"
#include "ui/graph/window_services.hpp"
#include "ui/main/about_dialog.hpp"
#include "ui/main/tell.hpp"
#include "ui/main/welcome_panel.hpp"
#include "ui/recipes/recipe_dialog.hpp"
#include "ui/text.hpp"
#include "ui/trial/history_panel.hpp"
#include "ui/trial/trial_panel.hpp"

namespace velmora::ui {
namespace {

constexpr QSize kFirstSize{1280, 800};
constexpr QSize kFrame{16, 48};  // what window managers put around a window, about
constexpr int kBrowserWidth = 300;
constexpr int kHistoryWidth = 250;

// Commands of an open graph change how it looks; cropping alone changes the data.
bool ChangesData(const Action& action) {
  const Command* const* command = std::get_if<const Command*>(&action);
  return command != nullptr && ((*command)->needs != Needs::View || (*command)->id.starts_with("crop."));
}

}  // namespace

MainWindow::MainWindow(SettingsStore& store, const std::vector<std::string>& items,
                       std::function<void(Trial&)> example)
    : store_(store), settings_(store), makeExample_(std::move(example)) {
  setObjectName(QStringLiteral("frmVelmora2"));
  person_.Attach(workbench_, traces_);
  history_.Attach(workbench_);
  history_.SetOnDone([this](const Action& action) { Heard(action); });
  workbench_.desktop = WindowServices(this);
  workbench_.onShellRequest = [this](ShellRequest request) { Obey(request); };
  TakeStart(items);
  menus_ = std::make_unique<Menus>(menuBar(), [this](const Command& command) {
    command.id == "file.load" ? opener_.OpenSelected() : RunFromMenu(command);
  });
  AddPanels();
  AddBars();
  browser_->ShowPlaces(settings_.RecentDirectories());
  resize(kFirstSize.boundedTo(screen()->availableSize() - kFrame));
  resizeDocks({browserDock_, historyDock_}, {kBrowserWidth, kHistoryWidth}, Qt::Horizontal);
  if (restoreGeometry(settings_.Geometry()) && !isMaximized() && !isFullScreen()) {
    resize(size().boundedTo(screen()->availableSize()));  // the screen may have been a larger one
  }
  restoreState(settings_.State());
  historyDock_->hide();
  browser_->DataFiles()->setFocus();
  EnterDataDirectory();
  Refresh();
}

void MainWindow::TakeStart(const std::vector<std::string>& items) {
  ReadStartSettings(workbench_, store_);
  workbench_.texts = settings_.TextLayouts();
  TakeCommandLine(workbench_, items);
  if (!items.empty() && FirstAction(workbench_) == StartAction::LoadFile) {
    workbench_.trial.FileName = FullPath(workbench_.trial.FileName);
  }
  workbench_.DataDir = CleanDirectory(workbench_.DataDir);
}

// Files that are averaged take the place of the trial. The numbers have a window in place of the command's
// dialogue.
void MainWindow::RunFromMenu(const Command& command) {
  if (command.id == "data.table") {
    dataTable_.Open(historyPanel_->Walking());
    return;
  }
  if (command.id != "ensemble.average" || workbench_.AfterView ||
      ConfirmDiscard(workbench_, "The data of " + FileNamePart(workbench_.LoadedFile) +
                                     " were modified but not saved.  Press Cancel to save them before other "
                                     "files are averaged.")) {
    RunCommand(command);
  }
}

// A dialogue that was left with nothing chosen closes like one that did its work: it is told apart here.
void MainWindow::RunCommand(const Command& command) {
  constexpr int kMilliseconds = 8000;
  runner_.Run(command);
  const CommandReport& report = workbench_.report;
  const bool works = command.menu.starts_with("&Analysis") || command.menu.starts_with("&Channel");
  if (works && report.deeds.empty() && report.warnings.empty() && report.failures.empty()) {
    statusBar()->showMessage(tr("%1: nothing was changed").arg(ToQt(WithoutMnemonic(command.caption))),
                             kMilliseconds);
  }
}

// A directory that is no more gives way to the current one.
void MainWindow::EnterDataDirectory() {
  std::error_code error;
  const bool there = std::filesystem::is_directory(workbench_.DataDir, error);
  OpenDirectory(workbench_, there ? workbench_.DataDir : CleanDirectory(""));
}

void MainWindow::Begin() {
  const std::string broken = settings_.BrokenFile();  // a load stores the recent files, and mends it
  switch (FirstAction(workbench_)) {
    case StartAction::LoadFile:
      if (!opener_.LoadSelected() && workbench_.trial.NData > 0) {
        runner_.OpenGraph();
      }
      break;
    case StartAction::ShowAbout:
      workbench_.trial.FileName.clear();
      ShowAbout(this);
      break;
    case StartAction::Nothing:
      workbench_.trial.FileName.clear();
      break;
  }
  browser_->Refresh();
  if (!broken.empty()) {
    Tell(person_, "Settings",
         "The settings cannot be read, in whole or in part, and what is lost of them begins anew:\n" +
             broken + "\nA copy is kept beside it, as settings.json.broken, when settings are saved.");
  }
}

void MainWindow::Heard(const Action& action) {
  traceStale_ = traceStale_ || ChangesData(action);
  if (!refreshDue_) {
    refreshDue_ = true;
    QMetaObject::invokeMethod(this, &MainWindow::Refresh, Qt::QueuedConnection);
  }
}

void MainWindow::Refresh() {
  refreshDue_ = false;
  const bool loaded = workbench_.trial.NData > 0;
  if (traceStale_) {
    traces_.Take(workbench_.trial);
    runner_.RefreshChannels();
    traceStale_ = false;
  }
  if (loaded) {
    trial_->Refresh(ToQt(workbench_.LoadedFile));
  } else {
    welcome_->ShowRecent(settings_.RecentFiles());
  }
  middle_->setCurrentIndex(loaded ? 1 : 0);
  dataTable_.Refresh();
  browser_->MarkLoaded();
  ShowHistory();
  ShowState();
  Q_EMIT Shown();
}

// Comes with the first thing done to the trial and goes with the trial; in between it may be closed.
void MainWindow::ShowHistory() {
  historyPanel_->Refresh();
  const bool worth = history_.Lines().size() > 1;
  if (worth != historyShown_) {
    historyShown_ = worth;
    historyDock_->setVisible(worth);
  }
}

void MainWindow::ShowState() {
  menus_->Update(workbench_);
  state_.Show(workbench_);
}

void MainWindow::Obey(ShellRequest request) {
  switch (request) {
    case ShellRequest::ShowFiles:
      if (browser_ != nullptr) {
        browser_->Refresh();
      }
      break;
    case ShellRequest::ExploreDirectory:
      if (!ShowDirectory(workbench_.DataDir)) {
        Tell(person_, "Explore", "No program for directories was found on this computer.");
      }
      break;
    case ShellRequest::HideGraph:
      runner_.HideGraph();
      break;
    case ShellRequest::Exit:
      leaving_ = true;
      QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
      break;
  }
}

// The tables of a run are written at its end: one that is stopped writes what it has, one that is killed
// nothing.
bool MainWindow::MayStopRecipe() {
  if (recipes_ == nullptr || !recipes_->IsRunning()) {
    return true;
  }
  if (person_.AskBox({.title = "Recipe Is Running",
                      .text = "A recipe is running.  Press OK to stop it and exit, or Cancel to let it end.",
                      .icon = Icon::Exclamation,
                      .buttons = {Button::OK, Button::Cancel}}) != Button::OK) {
    return false;
  }
  recipes_->Stop();
  return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (runner_.Busy()) {
    event->ignore();
    return;
  }
  if (!leaving_) {
    runner_.Run("file.exit");
    event->ignore();
    return;
  }
  if (!MayStopRecipe()) {
    leaving_ = false;
    event->ignore();
    return;
  }
  runner_.CloseViews();
  dataTable_.Close();
  settings_.SavePlace(saveGeometry(), saveState());
  settings_.SaveTextLayouts(workbench_.texts);
  WriteExitSettings(workbench_, store_);
  std::error_code error;
  std::filesystem::current_path(workbench_.StartDir, error);
  event->accept();
}

}  // namespace velmora::ui
