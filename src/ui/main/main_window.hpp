#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/files/settings.hpp"
#include "core/workbench.hpp"
#include "run/history/history.hpp"
#include "ui/data/data_table.hpp"
#include "ui/dialogs/qt_questions.hpp"
#include "ui/main/channel_actions.hpp"
#include "ui/main/command_runner.hpp"
#include "ui/main/file_opener.hpp"
#include "ui/main/history_actions.hpp"
#include "ui/main/menus.hpp"
#include "ui/main/outside_programs.hpp"
#include "ui/main/state_display.hpp"
#include "ui/main/window_settings.hpp"
#include "ui/trial/channel_traces.hpp"

class QDockWidget;
class QStackedWidget;
class QToolBar;

namespace velmora::ui {

class BrowserPanel;
class HistoryPanel;
class RecipeDialog;
class TrialPanel;
class WelcomePanel;

/// The shell of the program: browser, trial, history, and every command by menu and button. It puts the
/// panels together and shows in them what commands have done; what is done lies with who does it.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `items` is the command line; `example` makes the trial that people can start with.
  MainWindow(SettingsStore& store, const std::vector<std::string>& items,
             std::function<void(Trial&)> example);

  /// What the session starts with: a file, the about panel, or nothing. Once the window is shown.
  void Begin();

  void RunCommand(const Command& command);
  void OpenFile(const std::string& path) { opener_.Open(path); }
  [[nodiscard]] Workbench& State() { return workbench_; }

 Q_SIGNALS:
  /// A command is over and the window shows what came of it.
  void Shown();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // main_window.cpp
  void TakeStart(const std::vector<std::string>& items);
  void EnterDataDirectory();
  void RunFromMenu(const Command& command);
  void Heard(const Action& action);
  void Refresh();
  void ShowHistory();
  void ShowState();
  void Obey(ShellRequest request);
  bool MayStopRecipe();

  // main_window_panels.cpp
  void AddPanels();
  void ConnectDataFiles();
  void EnterDirectory(const std::string& path);
  void TakeDropped(const std::vector<std::string>& paths);
  void ConnectTextFiles();
  void ConnectTrial();
  void ConnectHistory();
  void OpenSelectedText();

  // main_window_bars.cpp
  void AddBars();
  void AddToolBar();
  void AddOpenEntry();
  void AddRecentMenu();
  void AddRecipeEntry();
  void AddViewOptions();
  void AddOptionsMenu();
  void AddFilterMenus(QMenu* menu);
  void AddUserLevels(QMenu* menu);
  void AddThemes(QMenu* menu);
  void AddProgramMenu(QMenu* menu, ProgramKind kind);
  void AddFamilyMenus();
  void AddHelpMenu();
  QAction* AddTool(QToolBar* bar, std::string_view id, int glyph, const QString& text);

  SettingsStore& store_;
  WindowSettings settings_;
  std::function<void(Trial&)> makeExample_;
  ChannelTraces traces_;
  QtQuestions person_{this};
  History history_{person_};
  Workbench workbench_{history_.Recording()};
  CommandRunner runner_{workbench_, person_, this};
  FileOpener opener_{workbench_, runner_, store_, settings_};
  ChannelActions channelActions_{runner_, person_};
  HistoryActions historyActions_{workbench_, runner_, person_, history_};
  DataTable dataTable_{workbench_, runner_, person_, this};
  OutsidePrograms programs_{workbench_, person_};
  StateDisplay state_{this};
  std::unique_ptr<Menus> menus_;
  bool traceStale_ = false;
  bool refreshDue_ = false;
  bool historyShown_ = false;
  bool leaving_ = false;

  BrowserPanel* browser_ = nullptr;
  TrialPanel* trial_ = nullptr;
  WelcomePanel* welcome_ = nullptr;
  HistoryPanel* historyPanel_ = nullptr;
  QDockWidget* browserDock_ = nullptr;
  QDockWidget* historyDock_ = nullptr;
  QStackedWidget* middle_ = nullptr;
  QMenu* recent_ = nullptr;
  RecipeDialog* recipes_ = nullptr;  // none until it is asked for
};

}  // namespace velmora::ui
