// The panels of the window, and what they are wired to.
#include <QDockWidget>
#include <QStackedWidget>
#include <filesystem>

#include "browse/file_commands.hpp"
#include "core/files/paths.hpp"
#include "ui/browser/browser_panel.hpp"
#include "ui/main/file_drops.hpp"
#include "ui/main/main_window.hpp"
#include "ui/main/tell.hpp"
#include "ui/main/welcome_panel.hpp"
#include "ui/text.hpp"
#include "ui/trial/history_panel.hpp"
#include "ui/trial/trial_panel.hpp"

namespace velmora::ui {
namespace {

QDockWidget* Dock(QMainWindow* window, const QString& title, const char* name, QWidget* content) {
  auto* dock = new QDockWidget(title, window);
  dock->setObjectName(QString::fromUtf8(name));
  dock->setWidget(content);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
  return dock;
}

}  // namespace

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
  ConnectDataFiles();
  ConnectTextFiles();
  ConnectTrial();
  ConnectHistory();
}

void MainWindow::ConnectDataFiles() {
  const auto open = [this](const std::string& path) { opener_.Open(path); };
  opener_.onSelected = [this] { browser_->ShowSelected(); };
  opener_.onLoaded = [this] { browser_->ShowPlaces(settings_.RecentDirectories()); };
  connect(browser_, &BrowserPanel::DirectoryChosen, this,
          [this](const QString& path) { EnterDirectory(ToStd(path)); });
  connect(browser_, &BrowserPanel::FileChosen, this,
          [this](const QString& path) { opener_.Open(ToStd(path)); });
  FileListView* files = browser_->DataFiles();
  connect(files, &FileListView::Selected, this, [this](const std::string& path) { opener_.Select(path); });
  connect(files, &FileListView::Opened, this, open);
  connect(files, &FileListView::RightClicked, this,
          [this](const std::string& path) { opener_.AskAndOpen(path); });
  connect(files, &FileListView::EmptyClicked, this,
          [this] { Tell(person_, "", "No data files in this subdirectory."); });
  connect(welcome_, &WelcomePanel::ExampleWanted, this, [this] { opener_.OpenExample(makeExample_); });
  connect(welcome_, &WelcomePanel::FileWanted, this, [open](const QString& path) { open(ToStd(path)); });
  new FileDrops(this, [this](const std::vector<std::string>& paths) { TakeDropped(paths); });
}

void MainWindow::EnterDirectory(const std::string& path) {
  if (!OpenDirectory(workbench_, path)) {
    browser_->Refresh();  // back to where it is
  }
}

// There is one trial; whoever drops several files learns which one it will be.
void MainWindow::TakeDropped(const std::vector<std::string>& paths) {
  std::error_code error;
  if (runner_.Busy()) {
    return;
  }
  if (std::filesystem::is_directory(paths.front(), error)) {
    EnterDirectory(paths.front());
    return;
  }
  if (paths.size() > 1 &&
      person_.AskBox({.title = "Several Files",
                      .text = std::to_string(paths.size()) +
                              " files were dropped, and one trial is open at a time.  Press OK to open " +
                              FileNamePart(paths.front()) +
                              ".  \"Run a recipe\" of the File menu works on several files.",
                      .icon = Icon::Information,
                      .buttons = {Button::OK, Button::Cancel}}) != Button::OK) {
    return;
  }
  opener_.Open(paths.front());
}

void MainWindow::ConnectTextFiles() {
  FileListView* files = browser_->TextFiles();
  connect(files, &FileListView::Opened, this, [this](const std::string& path) { programs_.OpenText(path); });
  connect(files, &FileListView::RightClicked, this,
          [this](const std::string& path) { programs_.AskAndOpenText(path); });
  connect(files, &FileListView::EmptyClicked, this, &MainWindow::OpenSelectedText);
  connect(browser_, &BrowserPanel::TextWanted, this, &MainWindow::OpenSelectedText);
}

void MainWindow::OpenSelectedText() {
  const FileListView* files = browser_->TextFiles();
  if (files->topLevelItemCount() == 0) {
    Tell(person_, "", "No output files in this directory.");
  } else if (files->SelectedPath().empty()) {
    Tell(person_, "", "No output file was selected.");
  } else {
    programs_.OpenText(files->SelectedPath());
  }
}

void MainWindow::ConnectTrial() {
  runner_.selectedChannels = [this] { return trial_->Channels()->SelectedChannels(); };
  connect(trial_, &TrialPanel::LabelTyped, this, [this](int channel, const QString& typed) {
    channelActions_.EditName("edit.labels", channel, typed);
  });
  connect(trial_, &TrialPanel::UnitsTyped, this, [this](int channel, const QString& typed) {
    channelActions_.EditName("edit.units", channel, typed);
  });
  connect(trial_, &TrialPanel::ChannelMenu, this,
          [this](int channel, const QPoint& at) { channelActions_.ShowMenu(channel, at); });
  connect(trial_, &TrialPanel::ChannelWanted, this, [this](int channel) { runner_.ShowChannel(channel); });
}

void MainWindow::ConnectHistory() {
  connect(historyPanel_, &HistoryPanel::RecipeWanted, this, [this] { historyActions_.SaveRecipe(); });
  connect(historyPanel_, &HistoryPanel::LineWanted, this, [this](int line) { historyActions_.GoTo(line); });
  QMenu* edit = menus_->Top("&Edit");
  QAction* first = edit->actions().constFirst();
  edit->insertActions(first, historyPanel_->Walking());
  edit->insertSeparator(first);
}

}  // namespace velmora::ui
