#include "ui/graph/graph_menus.hpp"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <array>

#include "app/command_table.hpp"
#include "ui/graph/graph_marks.hpp"
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
  std::string_view command;  // empty: not there yet
  std::string_view caption = {};
};

constexpr std::array kExtras = {
    Extra{"&File", "view.save", "", "Save &Events (Cursors)"},
    Extra{"&Grid", "grid.ordinate-label", "", "&Include thresholds"},
    Extra{"&Grid", "grid.default", "style.save"},
    Extra{"&Grid", "grid.default", "style.recall"},
    Extra{"&Cursor", "cursor.two", "", "&Triggering"},
    Extra{"&Help", "help.keyboard", "", "&Scroll/page the data"},
    Extra{"&Help", "help.keyboard", "", "&Triggering, event and interval detection"},
    Extra{"&Help", "help.keyboard", "", "&Use triggering to create windows for statistcis"}};

struct StatisticsEntry {
  std::string_view id;  // behind that of the range
  std::string_view caption;
};

constexpr std::array kStatistics = {
    StatisticsEntry{".mean", "&Mean, min. && max."}, StatisticsEntry{".median", "Me&dian stats."},
    StatisticsEntry{".emg", "&EMG stats."}, StatisticsEntry{".integral", "&Integration stats."}};

void AddMissing(QMenu* menu, std::string_view caption) {
  QAction* action = menu->addAction(ToQt(caption));
  action->setEnabled(false);
  action->setToolTip(QObject::tr("Not in this version yet"));
}

std::string_view LastPart(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

GraphMenus::GraphMenus(QMenuBar* bar, Run run) : run_(std::move(run)) {
  for (const std::string_view name : kMenus) {
    if (name == "C&rop") {
      AddStatistics(bar);
    }
    QMenu* menu = bar->addMenu(ToQt(name));
    menu->setToolTipsVisible(true);
    Fill(menu, name);
    if (name == "&File") {
      file_ = menu;
    }
  }
}

void GraphMenus::Fill(QMenu* menu, std::string_view path) {
  for (const Command& command : AllCommands()) {
    if (command.needs != Needs::View || command.menu.find('/') == std::string_view::npos ||
        LastPart(command.menu) != path) {
      continue;
    }
    Add(menu, command);
    for (const Extra& extra : kExtras) {
      if (extra.menu != path || extra.after != command.id) {
        continue;
      }
      const Command* known = FindCommand(extra.command);
      known != nullptr ? Add(menu, *known) : AddMissing(menu, extra.caption);
    }
  }
}

void GraphMenus::Add(QMenu* menu, const Command& command) {
  QAction* action = menu->addAction(ToQt(command.caption));
  action->setObjectName(ToQt(command.id));
  if (GraphMarks().contains(command.id)) {
    action->setCheckable(true);
    marked_.emplace_back(command.id, action);
  }
  QObject::connect(action, &QAction::triggered, action, [this, &command] { run_(command); });
}

void GraphMenus::AddStatistics(QMenuBar* bar) {
  QMenu* menu = bar->addMenu(QStringLiteral("S&tatistics"));
  const std::pair<const char*, const char*> ranges[] = {{"&All data", "all-stats"},
                                                        {"&Between cursors", "window-stats"}};
  for (const auto& [caption, id] : ranges) {
    QMenu* sub = menu->addMenu(QString::fromLatin1(caption));
    sub->setToolTipsVisible(true);
    for (const StatisticsEntry& entry : kStatistics) {
      const Command* command = FindCommand(std::string(id).append(entry.id));
      command != nullptr ? Add(sub, *command) : AddMissing(sub, entry.caption);
    }
  }
  AddMissing(menu, "Statistics between &Cursors");
}

void GraphMenus::Update(const SingleView& view, const Workbench& workbench) {
  for (const auto& [id, action] : marked_) {
    action->setChecked(GraphMarks().at(id)(view, workbench));
  }
}

}  // namespace velmora::ui
