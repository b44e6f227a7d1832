#include "ui/main/main_window.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QUrl>
#include <filesystem>

#include "app/command_table.hpp"
#include "browse/file_commands.hpp"
#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/files/start.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "graph/single_view.hpp"
#include "run/recipe_questions.hpp"
#include "ui/browser/browser_panel.hpp"
#include "ui/desktop.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/main/about_dialog.hpp"
#include "ui/main/welcome_panel.hpp"
#include "ui/text.hpp"
#include "ui/trial/history_panel.hpp"
#include "ui/trial/trial_panel.hpp"

namespace velmora::ui {
namespace {

constexpr QSize kFirstSize{1280, 800};
constexpr int kBrowserWidth = 300;
constexpr int kHistoryWidth = 250;

QDockWidget* Dock(QMainWindow* window, const QString& title, const char* name, QWidget* content) {
  auto* dock = new QDockWidget(title, window);
  dock->setObjectName(QString::fromUtf8(name));
  dock->setWidget(content);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
  return dock;
}

/// A trial as a file: written by the command of the File menu, in a workbench of its own.
void WriteTrial(const std::function<void(Trial&)>& make, const std::string& path) {
  const std::vector<Answer> answers = {{.what = FileAnswer{{path}}}};
  RecipeQuestions questions;
  Workbench workbench(questions);
  make(workbench.trial);
  questions.BeginStep(answers, workbench.trial);
  velmora::RunCommand(workbench, *FindCommand("save.vmb"));
  if (!workbench.report.failures.empty()) {
    throw FileError(workbench.report.failures.front());
  }
}

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
  workbench_.onShellRequest = [this](ShellRequest request) { Obey(request); };
  workbench_.onShowChannel = [this](int channel) { channelWindows_.Open(channel); };
  ReadStartSettings(workbench_, store_);
  TakeCommandLine(workbench_, items);
  if (!items.empty() && FirstAction(workbench_) == StartAction::LoadFile) {
    workbench_.trial.FileName = FullPath(workbench_.trial.FileName);
  }
  workbench_.DataDir = CleanDirectory(workbench_.DataDir);
  setAcceptDrops(true);
  menus_ = std::make_unique<Menus>(menuBar(), [this](const Command& command) { RunCommand(command); });
  AddPanels();
  AddRecentMenu();
  AddViewOptions();
  AddOptionsMenu();
  AddFamilyMenus();
  AddHelpMenu();
  AddToolBar();
  AddStatusBar();
  resize(kFirstSize);
  resizeDocks({browserDock_, historyDock_}, {kBrowserWidth, kHistoryWidth}, Qt::Horizontal);
  restoreGeometry(settings_.Geometry());
  restoreState(settings_.State());
  historyDock_->hide();
  EnterDataDirectory();
  Refresh();
}

// A directory that is no more gives way to the current one.
void MainWindow::EnterDataDirectory() {
  std::error_code error;
  const bool there = std::filesystem::is_directory(workbench_.DataDir, error);
  const std::string file = workbench_.trial.FileName;
  OpenDirectory(workbench_, there ? workbench_.DataDir : CleanDirectory(""));
  workbench_.trial.FileName = file;
}

MainWindow::~MainWindow() {
  CloseGraph();
}

void MainWindow::Begin() {
  switch (FirstAction(workbench_)) {
    case StartAction::LoadFile:
      LoadSelected();
      if (workbench_.trial.NData > 0) {
        OpenGraph();
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
}

void MainWindow::AddPanels() {
  browser_ = new BrowserPanel(workbench_);
  browserDock_ = Dock(this, tr("Files"), "filesDock", browser_);
  addDockWidget(Qt::LeftDockWidgetArea, browserDock_);
  middle_ = new QStackedWidget;
  welcome_ = new WelcomePanel;
  trial_ = new TrialPanel(workbench_, traces_);
  middle_->addWidget(welcome_);
  middle_->addWidget(trial_);
  setCentralWidget(middle_);
  historyPanel_ = new HistoryPanel(history_);
  historyDock_ = Dock(this, tr("History"), "historyDock", historyPanel_);
  addDockWidget(Qt::RightDockWidgetArea, historyDock_);
  ConnectBrowser();
  ConnectTextFiles();
  ConnectTrial();
  ConnectHistory();
}

void MainWindow::ConnectBrowser() {
  connect(browser_, &BrowserPanel::DirectoryChosen, this,
          [this](const QString& path) { OpenDirectory(workbench_, ToStd(path)); });
  FileListView* dataFiles = browser_->DataFiles();
  connect(dataFiles, &FileListView::Selected, this, [this](const std::string& path) { Select(path); });
  connect(dataFiles, &FileListView::Opened, this, &MainWindow::OpenFile);
  connect(dataFiles, &FileListView::RightClicked, this, [this](const std::string& path) {
    Select(path);
    if (AskReadFile(workbench_, path)) {
      OpenFile(path);
    }
  });
  connect(dataFiles, &FileListView::EmptyClicked, this,
          [this] { Tell("", "No data files in this subdirectory."); });
  connect(welcome_, &WelcomePanel::ExampleWanted, this, [this] { OpenExample(); });
  connect(welcome_, &WelcomePanel::FileWanted, this, [this](const QString& path) { OpenFile(ToStd(path)); });
}

void MainWindow::ConnectTrial() {
  connect(trial_, &TrialPanel::LabelTyped, this,
          [this](int channel, const QString& typed) { EditName("edit.labels", channel, typed); });
  connect(trial_, &TrialPanel::UnitsTyped, this,
          [this](int channel, const QString& typed) { EditName("edit.units", channel, typed); });
  connect(trial_, &TrialPanel::ChannelMenu, this, &MainWindow::ShowChannelMenu);
  connect(trial_, &TrialPanel::ChannelWanted, this,
          [this](int channel) { ShowChannel(workbench_, channel); });
}

void MainWindow::ConnectHistory() {
  connect(historyPanel_, &HistoryPanel::RecipeWanted, this, [this] { SaveRecipe(); });
  connect(historyPanel_, &HistoryPanel::GoBackWanted, this, [this](int step) { GoBack(step); });
}

void MainWindow::RunCommand(const Command& command) {
  if (running_ > 0) {
    return;  // commands do not run inside each other
  }
  ++running_;
  if (graph_ != nullptr) {
    graph_->Rest();
  }
  velmora::RunCommand(workbench_, command);
  --running_;
  ShowView();
  if (person_.TakeGraphWanted()) {
    OpenGraph();
  }
}

// The view that a command opened gets its window here; it goes when the view goes.
void MainWindow::ShowView() {
  if (graph_ != nullptr) {
    graph_->Refresh();
    if (workbench_.view == nullptr) {
      graph_.clear();  // it has closed and goes by itself
    }
  } else if (workbench_.view != nullptr) {
    graph_ = new GraphWindow(
        workbench_, [this](const Command& command) { RunCommand(command); }, this);
    graph_->ShowGraph();
  }
}

void MainWindow::CloseGraph() {
  delete graph_;
  workbench_.view.reset();
}

void MainWindow::Select(const std::string& path) {
  SelectFile(workbench_, path);
  browser_->ShowSelected();
}

void MainWindow::OpenFile(const std::string& path) {
  if (running_ > 0 ||
      (!workbench_.merge.MergePending &&
       !ConfirmDiscard(workbench_,
                       "Data were modified but not saved.  Press Cancel to save data before loading "
                       "another file."))) {
    return;
  }
  const std::string full = FullPath(path);
  OpenDirectory(workbench_, DirectoryOf(full));  // LoadFile takes the current directory for the file's own
  Select(full);
  LoadSelected();
  SaveLastFile(workbench_, store_);
}

void MainWindow::LoadSelected() {
  const std::string path = workbench_.trial.FileName;
  RunCommand(*FindCommand("file.load"));
  if (workbench_.trial.NData > 0) {
    settings_.AddRecentFile(ToQt(path));
  }
}

void MainWindow::OpenExample() {
  const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                            QStringLiteral("/velmora2/examples");
  const QString path = directory + QStringLiteral("/emg-bursts.vmb");
  try {
    std::filesystem::create_directories(ToStd(directory));
    if (!std::filesystem::exists(ToStd(path))) {
      WriteTrial(makeExample_, ToStd(path));
    }
  } catch (const std::exception& error) {
    Tell("Example", error.what());
    return;
  }
  OpenFile(ToStd(path));
}

void MainWindow::OpenGraph() {
  const Command* multi = workbench_.preferences.Multiaxis ? FindCommand("graph.multi") : nullptr;
  RunCommand(multi != nullptr ? *multi : *FindCommand("graph.single"));
}

// What is typed into the table is the answer to the command that asks for it, and so part of the history.
void MainWindow::EditName(const char* id, int channel, const QString& typed) {
  if (typed.trimmed().isEmpty()) {
    return;
  }
  person_.AnswerNextPick([channel, text = ToStd(typed)](ChannelPicker& picker) {
    picker.SetName(channel, text);
    return std::string("OK");
  });
  RunCommand(*FindCommand(id));
  person_.AnswerNextPick(nullptr);  // had it not been asked for, it must not answer something else
}

void MainWindow::ShowChannelMenu(int channel, const QPoint& at) {
  QMenu menu;
  const auto add = [&](QMenu* to, const char* id) {
    if (const Command* command = FindCommand(id)) {
      connect(to->addAction(ToQt(command->caption)), &QAction::triggered, this,
              [this, command] { RunCommand(*command); });
    }
  };
  connect(menu.addAction(tr("&Graph this channel")), &QAction::triggered, this,
          [this, channel] { ShowChannel(workbench_, channel); });
  for (const char* id : {"graph.single", "analysis.scaling", "analysis.low-pass", "analysis.high-pass"}) {
    add(&menu, id);
  }
  menu.addSeparator();
  QMenu* math = menu.addMenu(tr("&Mathematical functions"));
  QMenu* smooth = menu.addMenu(tr("Sm&oothing"));
  QMenu* bias = menu.addMenu(tr("&Bias Removal"));
  for (const Command& command : AllCommands()) {
    QMenu* to = command.id.starts_with("math.")     ? math
                : command.id.starts_with("smooth.") ? smooth
                : command.id.starts_with("bias.")   ? bias
                                                    : nullptr;
    if (to != nullptr) {
      add(to, command.id.data());
    }
  }
  menu.addSeparator();
  add(&menu, "edit.labels");
  add(&menu, "edit.units");
  person_.SetFavouredChannel(channel);
  menu.exec(at);
  person_.SetFavouredChannel(0);
}

void MainWindow::SaveRecipe() {
  const std::vector<std::string> answer =
      person_.AskFile({.mode = FileQuestion::Mode::Save,
                       .title = "Save Recipe",
                       .defaultName = BaseName(workbench_.LoadedFile) + ".yaml",
                       .extension = ".yaml",
                       .filter = "Recipes (.yaml)|*.yaml|All files (*.*)|*.*",
                       .directory = workbench_.DataDir});
  if (answer.empty()) {
    return;
  }
  try {
    OutputFile file(answer.front());
    file.Write(history_.Recipe());
    file.Commit();
    browser_->Refresh();
  } catch (const FileError& error) {
    workbench_.OutputFileName = answer.front();
    ShowSaveFailure(workbench_, error.what());
  }
}

void MainWindow::GoBack(int step) {
  if (running_ > 0) {
    return;
  }
  const Button answer = person_.AskBox(
      {.title = "Go Back",
       .text =
           "The file is read again and the steps down to the selected one are repeated.\nWhat was done after "
           "it is lost.",
       .icon = Icon::Question,
       .buttons = {Button::OK, Button::Cancel}});
  if (answer != Button::OK) {
    return;
  }
  ++running_;
  if (graph_ != nullptr) {
    graph_->Rest();
  }
  const std::string why = history_.GoBack(static_cast<std::size_t>(step));
  --running_;
  if (!why.empty()) {
    Tell("Go Back", why);
  }
  ShowView();
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
    channelWindows_.Refresh();
    traceStale_ = false;
  }
  if (loaded) {
    trial_->Refresh(ToQt(workbench_.LoadedFile));
  } else {
    welcome_->ShowRecent(settings_.RecentFiles());
  }
  middle_->setCurrentIndex(loaded ? 1 : 0);
  ShowHistory();
  ShowState();
  Q_EMIT Shown();
}

// Comes with the first thing done to the trial and goes with the trial; in between it may be closed.
void MainWindow::ShowHistory() {
  historyPanel_->Refresh();
  const bool worth = history_.Steps().size() > 1;
  if (worth != historyShown_) {
    historyShown_ = worth;
    historyDock_->setVisible(worth);
  }
}

void MainWindow::Tell(const std::string& title, const std::string& text) {
  person_.AskBox({.title = title, .text = text, .icon = Icon::Exclamation});
}

void MainWindow::ShowState() {
  const Trial& trial = workbench_.trial;
  menus_->Update(workbench_);
  modified_->setText(trial.NData > 0 && trial.FileChanged ? QStringLiteral("Modified") : QString());
  level_->setText(workbench_.UserLevel == UserLevelKind::Expert ? QStringLiteral("Expert")
                                                                : QStringLiteral("Novice"));
  setWindowTitle(trial.NData > 0
                     ? ToQt(workbench_.ExeName + "    Current file is: " + workbench_.LoadedFile) +
                           QStringLiteral("[*]")
                     : QStringLiteral("Velmora2"));
  setWindowModified(trial.NData > 0 && trial.FileChanged);
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
        Tell("Explore", "No program for directories was found on this computer.");
      }
      break;
    case ShellRequest::Exit:
      leaving_ = true;
      QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
      break;
  }
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (running_ > 0) {
    event->ignore();
    return;
  }
  if (!leaving_) {
    RunCommand(*FindCommand("file.exit"));
    event->ignore();
    return;
  }
  CloseView(workbench_);
  CloseGraph();
  channelWindows_.CloseAll();
  settings_.SavePlace(saveGeometry(), saveState());
  WriteExitSettings(workbench_, store_);
  std::error_code error;
  std::filesystem::current_path(workbench_.StartDir, error);
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (!urls.isEmpty() && urls.constFirst().isLocalFile()) {
    event->acceptProposedAction();
  }
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QString path = event->mimeData()->urls().constFirst().toLocalFile();
  event->acceptProposedAction();
  // The program that the file comes from waits until the drop is over.
  QMetaObject::invokeMethod(
      this, [this, path] { OpenFile(ToStd(path)); }, Qt::QueuedConnection);
}

}  // namespace velmora::ui
