#pragma once

#include <QPointer>

#include "core/workbench.hpp"
#include "ui/data/data_window.hpp"
#include "ui/dialogs/qt_questions.hpp"
#include "ui/main/command_runner.hpp"

namespace velmora::ui {

/// The table of the trial's numbers, at most one, and what is done in it. A changed cell is the command
/// `data.table` with its answers, and so a step of the history like any other.
class DataTable {
 public:
  /// It appears over `parent`.
  DataTable(Workbench& workbench, CommandRunner& runner, QtQuestions& person, QWidget* parent)
      : workbench_(workbench), runner_(runner), person_(person), parent_(parent) {}
  DataTable(const DataTable&) = delete;
  DataTable& operator=(const DataTable&) = delete;
  ~DataTable() { Close(); }

  /// Opens it, or brings it to the front; `walking` are Undo and Redo.
  void Open(const QList<QAction*>& walking);
  /// Shows the trial as it is now.
  void Refresh();
  void Close() { delete window_.data(); }

 private:
  void Change();
  void GoTo();
  void Copy();

  Workbench& workbench_;
  CommandRunner& runner_;
  QtQuestions& person_;
  QWidget* parent_;
  QPointer<DataWindow> window_;  // deletes itself when it is closed
};

}  // namespace velmora::ui
