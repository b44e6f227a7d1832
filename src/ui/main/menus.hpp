#pragma once

#include <QAction>
#include <QMenu>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

#include "core/command.hpp"
#include "core/workbench.hpp"

class QMenuBar;

namespace velmora::ui {

/// Whether what a command needs is there.
bool IsPossible(const Command& command, const Workbench& workbench);

/// The menus of the main window, built from the command table. Commands of a graph's own window are
/// not among them.
class Menus {
 public:
  using Run = std::function<void(const Command&)>;

  Menus(QMenuBar* bar, Run run);

  /// The top menu with this caption; made when there is none yet.
  QMenu* Top(std::string_view caption);
  /// nullptr when the command has no place in the menus.
  [[nodiscard]] QAction* Of(std::string_view id) const;
  /// Greys what cannot be done now.
  void Update(const Workbench& workbench);

 private:
  QMenu* MenuAt(std::string_view path);
  void Add(const Command* command, std::string_view id, std::string_view menu, std::string_view caption);

  QMenuBar* bar_;
  Run run_;
  std::map<std::string, QMenu*, std::less<>> menus_;
  std::map<std::string, QAction*, std::less<>> first_;  // by id, the first place of each
  struct Entry {
    const Command* command;
    QAction* action;
  };
  std::vector<Entry> entries_;
};

}  // namespace velmora::ui
