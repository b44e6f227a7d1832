// The menus of the single-axis graph.
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <array>

#include "app/command_table.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// The order of the menu bar; statistics stand before crop.
constexpr std::array<std::string_view, 12> kMenus = {"&File",     "&Grid",     "&Background", "&Cursor",
                                                     "&Abscissa", "&Ordinate", "&Line",       "&Point",
                                                     "&Scale",    "C&rop",     "&Zoom",       "&Help"};

/// What a menu has besides the commands that name it as theirs.
struct Extra {
  std::string_view menu;
  std::string_view after;    // the id it follows
  std::string_view command;  // empty, or no command yet: grey
  std::string_view caption = {};
};

constexpr std::array kExtras = {
    Extra{"&File", "view.save", "view.save-events", "Save &Events (Cursors)"},
    Extra{"&Grid", "grid.ordinate-label", "grid.thresholds", "&Include thresholds"},
    Extra{"&Grid", "grid.default", "style.save"},
    Extra{"&Grid", "grid.default", "style.recall"},
    Extra{"&Cursor", "cursor.two", "trigger.open", "&Triggering"},
    Extra{"&Help", "help.keyboard", "", "&Scroll/page the data"},
    Extra{"&Help", "help.keyboard", "", "&Triggering, event and interval detection"},
    Extra{"&Help", "help.keyboard", "", "&Use triggering to create windows for statistcis"}};

struct StatisticsEntry {
  std::string_view id;  // behind that of the range
  std::string_view caption;
};

constexpr std::array kStatistics = {
    StatisticsEntry{"descriptive", "&Mean, min. && max."}, StatisticsEntry{"median", "Me&dian stats."},
    StatisticsEntry{"emg", "&EMG stats."}, StatisticsEntry{"integration", "&Integration stats."}};

/// Whether a command of the menu has a place of its own among its entries.
bool HasPlace(const Command& command, std::string_view menu) {
  return std::any_of(kExtras.begin(), kExtras.end(),
                     [&](const Extra& extra) { return extra.menu == menu && extra.command == command.id; });
}

void AddStatistics(GraphMenus& menus, QMenuBar* bar) {
  QMenu* menu = bar->addMenu(QStringLiteral("S&tatistics"));
  const std::pair<const char*, const char*> ranges[] = {{"&All data", "statistics.all-"},
                                                        {"&Between cursors", "statistics.between-"}};
  for (const auto& [caption, id] : ranges) {
    QMenu* sub = menu->addMenu(QString::fromLatin1(caption));
    sub->setToolTipsVisible(true);
    for (const StatisticsEntry& entry : kStatistics) {
      menus.Add(sub, std::string(id).append(entry.id), entry.caption);
    }
  }
  menus.Add(menu, "statistics.cursors", "Statistics between &Cursors");
}

}  // namespace

void FillSingleMenu(GraphMenus& menus, QMenu* menu, std::string_view name,
                    const std::function<bool(std::string_view id)>& fits) {
  const std::string path = "&Single-axis graph/" + std::string(name);
  for (const Command& command : AllCommands()) {
    if (command.needs != Needs::View || command.menu != path || HasPlace(command, name)) {
      continue;
    }
    if (fits(command.id)) {
      menus.Add(menu, command.id);
    }
    for (const Extra& extra : kExtras) {
      if (extra.menu == name && extra.after == command.id && fits(extra.command)) {
        menus.Add(menu, extra.command, extra.caption);
      }
    }
  }
}

void AddSingleMenus(GraphMenus& menus, QMenuBar* bar) {
  for (const std::string_view name : kMenus) {
    if (name == "C&rop") {
      AddStatistics(menus, bar);
    }
    QMenu* menu = bar->addMenu(ToQt(name));
    menu->setToolTipsVisible(true);
    FillSingleMenu(menus, menu, name, [](std::string_view /*id*/) { return true; });
    if (name == "&File") {
      menus.SetFileMenu(menu);
    }
  }
}

}  // namespace velmora::ui
