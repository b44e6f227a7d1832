#pragma once

#include <QAction>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/command.hpp"
#include "graph/graph_view.hpp"

class QMenu;
class QMenuBar;

namespace velmora::ui {

/// The menus of an open graph: entries run commands by their ids, and show by check marks and greys how the
/// graph stands. Entries whose commands do not exist yet are there and grey.
class GraphMenus {
 public:
  using Run = std::function<void(const Command&)>;

  explicit GraphMenus(Run run) : run_(std::move(run)) {}

  /// `caption` is shown in place of the command's own, unless it is empty.
  void Add(QMenu* menu, std::string_view id, std::string_view caption = {});
  void SetFileMenu(QMenu* menu) { file_ = menu; }
  [[nodiscard]] QMenu* FileMenu() const { return file_; }
  /// Sets check marks and greys as the view stands.
  void Update(const GraphView& view, const Workbench& workbench);

 private:
  Run run_;
  QMenu* file_ = nullptr;
  struct Entry {
    const Command* command;
    QAction* action;
  };
  std::vector<Entry> entries_;
};

/// Fills the menu bar of the single-axis graph.
void AddSingleMenus(GraphMenus& menus, QMenuBar* bar);
/// Fills a menu with what the single-axis graph has in its menu of this name, as far as the ids fit; what has
/// no command yet fits no other graph.
void FillSingleMenu(GraphMenus& menus, QMenu* menu, std::string_view name,
                    const std::function<bool(std::string_view id)>& fits);
/// Fills the menu bar of the X-Y plot.
void AddXYMenus(GraphMenus& menus, QMenuBar* bar);
/// Fills the menu bar of the multi-axis graph.
void AddMultiMenus(GraphMenus& menus, QMenuBar* bar);

}  // namespace velmora::ui
