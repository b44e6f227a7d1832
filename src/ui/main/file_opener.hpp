#pragma once

#include <functional>
#include <string>

#include "core/files/settings.hpp"
#include "core/workbench.hpp"
#include "ui/main/command_runner.hpp"
#include "ui/main/window_settings.hpp"

namespace velmora::ui {

/// The ways in which a file becomes the trial.
class FileOpener {
 public:
  FileOpener(Workbench& workbench, CommandRunner& runner, SettingsStore& store, WindowSettings& settings)
      : workbench_(workbench), runner_(runner), store_(store), settings_(settings) {}

  /// Another file is selected; whoever shows which one it is hears of it.
  std::function<void()> onSelected;
  /// A file has become the trial.
  std::function<void()> onLoaded;

  void Select(const std::string& path);
  /// Goes to the file's directory and loads it; asks before unsaved work is lost.
  void Open(const std::string& path);
  /// Asks whether the file is to be read first.
  void AskAndOpen(const std::string& path);
  /// Asks for the file in a dialogue.
  void AskForFile();
  /// The selected file, or the one that is asked for when there is none.
  void OpenSelected();
  /// Returns whether a graph was asked for at the end of the load, and offered.
  bool LoadSelected();
  /// `make` is the trial that people can start with.
  void OpenExample(const std::function<void(Trial&)>& make);

 private:
  Workbench& workbench_;
  CommandRunner& runner_;
  SettingsStore& store_;
  WindowSettings& settings_;
};

}  // namespace velmora::ui
