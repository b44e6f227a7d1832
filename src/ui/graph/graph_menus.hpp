#pragma once

#include <QAction>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/command.hpp"
#include "graph/single_view.hpp"

class QMenu;
class QMenuBar;

namespace velmora::ui {

/// The menus of the single-axis graph, from the command table. Entries whose commands do not exist yet
/// are there and grey.
class GraphMenus {
 public:
  using Run = std::function<void(const Command&)>;

  GraphMenus(QMenuBar* bar, Run run);

  [[nodiscard]] QMenu* FileMenu() const { return file_; }
  /// Sets the check marks as the view stands.
  void Update(const SingleView& view, const Workbench& workbench);

 private:
  void Fill(QMenu* menu, std::string_view path);
  void Add(QMenu* menu, const Command& command);
  void AddStatistics(QMenuBar* bar);

  Run run_;
  QMenu* file_ = nullptr;
  std::vector<std::pair<std::string_view, QAction*>> marked_;
};

}  // namespace velmora::ui
