#pragma once

#include <string>

#include "run/history/history.hpp"
#include "ui/main/command_runner.hpp"

namespace velmora::ui {

/// What can be done with the history: a recipe of it, and the way back and on.
class HistoryActions {
 public:
  HistoryActions(Workbench& workbench, CommandRunner& runner, QtQuestions& person, History& history)
      : workbench_(workbench), runner_(runner), person_(person), history_(history) {}

  void SaveRecipe();
  /// Where the last one was saved in this session; empty: none was.
  [[nodiscard]] const std::string& SavedRecipe() const { return savedRecipe_; }
  /// Back or on to a line of the history, from 0, the load.
  void GoTo(int line);

 private:
  Workbench& workbench_;
  CommandRunner& runner_;
  QtQuestions& person_;
  History& history_;
  std::string savedRecipe_;
};

}  // namespace velmora::ui
