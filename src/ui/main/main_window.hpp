#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browse/programs.hpp"
#include "core/files/settings.hpp"
#include "core/workbench.hpp"
#include "run/history.hpp"
#include "ui/dialogs/qt_questions.hpp"
#include "ui/graph/channel_windows.hpp"
#include "ui/main/menus.hpp"
#include "ui/main/window_settings.hpp"
#include "ui/trial/channel_traces.hpp"

class QDockWidget;
class QLabel;
class QStackedWidget;
class QToolBar;

namespace velmora::ui {

class BrowserPanel;
class GraphWindow;
class HistoryPanel;
class TrialPanel;
class WelcomePanel;

/// The shell of the program: browser, trial, history, and every command by menu and button.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `items` is the command line; `example` makes the trial that people can start with.
  MainWindow(SettingsStore& store, const std::vector<std::string>& items,
             std::function<void(Trial&)> example);
  ~MainWindow() override;

  /// What the session starts with: a file, the about panel, or nothing. Once the window is shown.
  void Begin();

  void RunCommand(const Command& command);
  void OpenFile(const std::string& path);
  [[nodiscard]] Workbench& State() { return workbench_; }

 Q_SIGNALS:
  /// A command is over and the window shows what came of it.
  void Shown();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // main_window.cpp
  void AddPanels();
  void ConnectBrowser();
  void ConnectTrial();
  void ConnectHistory();
  void Heard(const Action& action);
  void Tell(const std::string& title, const std::string& text);
  void Refresh();
  void ShowHistory();
  void ShowState();
  void EnterDataDirectory();
  void Obey(ShellRequest request);
  void Select(const std::string& path);
  void LoadSelected();
  void OpenExample();
  void OpenGraph();
  void EditName(const char* id, int channel, const QString& typed);
  void ShowChannelMenu(int channel, const QPoint& at);
  void SaveRecipe();
  void GoBack(int step);
  void ShowView();
  void CloseGraph();

  // main_window_programs.cpp
  void ConnectTextFiles();
  void OpenText(const std::string& path);
  void OpenSelectedText();
  void OpenManual(const std::string& path);
  void AddProgramMenu(QMenu* menu, ProgramKind kind);
  void FillProgramMenu(QMenu* menu, ProgramKind kind);
  void ChooseProgram(ProgramKind kind);
  void AddFamilyMenus();

  // main_window_bars.cpp
  void AddToolBar();
  void AddStatusBar();
  void AddRecentMenu();
  void AddViewOptions();
  void AddOptionsMenu();
  void AddFilterMenus(QMenu* menu);
  void AddUserLevels(QMenu* menu);
  void AddThemes(QMenu* menu);
  void AddHelpMenu();
  QAction* AddTool(QToolBar* bar, std::string_view id, int glyph, const QString& text);

  SettingsStore& store_;
  WindowSettings settings_;
  std::function<void(Trial&)> makeExample_;
  ChannelTraces traces_;
  QtQuestions person_{this};
  History history_{person_};
  Workbench workbench_{history_.Recording()};
  ChannelWindows channelWindows_{workbench_, this};
  std::unique_ptr<Menus> menus_;
  bool traceStale_ = false;
  bool refreshDue_ = false;
  bool historyShown_ = false;
  int running_ = 0;
  bool leaving_ = false;

  BrowserPanel* browser_ = nullptr;
  TrialPanel* trial_ = nullptr;
  WelcomePanel* welcome_ = nullptr;
  HistoryPanel* historyPanel_ = nullptr;
  QDockWidget* browserDock_ = nullptr;
  QDockWidget* historyDock_ = nullptr;
  QStackedWidget* middle_ = nullptr;
  QPointer<GraphWindow> graph_;  // while a view is open; deletes itself when it is closed
  QLabel* modified_ = nullptr;
  QLabel* level_ = nullptr;
  QMenu* recent_ = nullptr;
};

}  // namespace velmora::ui
