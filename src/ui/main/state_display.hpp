#pragma once

#include "core/workbench.hpp"

class QLabel;
class QMainWindow;

namespace velmora::ui {

/// What the frame of the window says of the work: its title and its status bar.
class StateDisplay {
 public:
  explicit StateDisplay(QMainWindow* window);

  void Show(const Workbench& workbench);

 private:
  QMainWindow* window_;
  QLabel* modified_;
  QLabel* level_;
};

}  // namespace velmora::ui
