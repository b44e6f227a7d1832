// The menus of the X-Y plot: its own, and of the single-axis graph's what needs no time on the abscissa.
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <array>

#include "app/command_table.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr std::string_view kOwn = "&X-Y plot";
constexpr std::array<std::string_view, 11> kXYMenus = {"&File",     "&X-Y plot", "&Grid", "&Background",
                                                       "&Abscissa", "&Ordinate", "&Line", "&Point",
                                                       "&Scale",    "&Zoom",     "&Help"};
constexpr std::array<std::string_view, 5> kOverTime = {"view.save", "view.save-intervals", "view.save-events",
                                                       "grid.thresholds", "zoom.cursor"};

bool NeedsNoTime(std::string_view id) {
  return !id.empty() && std::find(kOverTime.begin(), kOverTime.end(), id) == kOverTime.end();
}

}  // namespace

void AddXYMenus(GraphMenus& menus, QMenuBar* bar) {
  for (const std::string_view name : kXYMenus) {
    QMenu* menu = bar->addMenu(ToQt(name));
    menu->setToolTipsVisible(true);
    if (name == kOwn) {
      for (const Command& command : AllCommands()) {
        if (command.menu == kOwn) {
          menus.Add(menu, command.id);
        }
      }
    } else {
      FillSingleMenu(menus, menu, name, NeedsNoTime);
    }
    if (name == "&File") {
      menus.SetFileMenu(menu);
    }
  }
}

}  // namespace velmora::ui
