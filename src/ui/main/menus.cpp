#include "ui/main/menus.hpp"

#include <QMenuBar>
#include <algorithm>

#include "app/command_table.hpp"
#include "core/text/text.hpp"
#include "export/save_list.hpp"
#include "ui/main/menu_list.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

bool IsOfGraph(const Command& command) {
  return command.menu.starts_with("&Single-axis graph") || command.menu.starts_with("&Multi-axis graph") ||
         command.menu.starts_with("&X-Y plot");
}

QKeySequence ShortcutOf(std::string_view id) {
  static const std::map<std::string_view, QKeySequence> keys = {
      {"save.vmb", Qt::CTRL | Qt::Key_S},
      {"file.refresh", Qt::Key_F5},
      {"file.exit", Qt::CTRL | Qt::Key_Q},
      {"graph.single", Qt::CTRL | Qt::Key_G},
      {"graph.all", Qt::CTRL | Qt::SHIFT | Qt::Key_G},
      {"smooth.butterworth", Qt::CTRL | Qt::Key_B}};
  const auto it = keys.find(id);
  return it == keys.end() ? QKeySequence() : it->second;
}

// A format that cannot be written is as little there as a command that is yet to come.
bool IsBuilt(const Command& command) {
  return std::none_of(kSaveList.begin(), kSaveList.end(), [&command](const SaveEntry& entry) {
    return entry.id == command.id && entry.write == nullptr;
  });
}

}  // namespace

bool IsPossible(const Command& command, const Workbench& workbench) {
  if (command.whyNot != nullptr && command.whyNot(workbench) != nullptr) {
    return false;
  }
  switch (command.needs) {
    case Needs::Nothing:
      return true;
    case Needs::Data:
      return workbench.trial.NData > 0;
    case Needs::TwoCursors:
      return workbench.trial.NData > 0 && workbench.trial.CursorHi > workbench.trial.CursorLo;
    case Needs::View:
      return workbench.view != nullptr;
  }
  return false;
}

namespace {

// It has a place of its own in the list, perhaps further down.
bool IsListed(const Command& command) {
  const std::span<const MenuPlace> places = MenuPlaces();
  return std::any_of(places.begin(), places.end(),
                     [&command](const MenuPlace& place) { return place.id == command.id; });
}

}  // namespace

Menus::Menus(QMenuBar* bar, Run run) : bar_(bar), run_(std::move(run)) {
  std::vector<bool> placed(AllCommands().size(), false);
  const auto place = [this, &placed](const Command& command, std::string_view menu) {
    placed[static_cast<std::size_t>(&command - AllCommands().data())] = true;
    Add(&command, command.id, menu, command.caption);
  };
  // The commands of a menu that is listed follow its last listed place.
  std::string_view menuBefore;
  const auto finish = [&](std::string_view menu) {
    for (const Command& command : AllCommands()) {
      if (command.menu == menu && !placed[static_cast<std::size_t>(&command - AllCommands().data())] &&
          !IsListed(command)) {
        place(command, menu);
      }
    }
  };
  for (const MenuPlace& entry : MenuPlaces()) {
    if (!menuBefore.empty() && menuBefore != entry.menu && entry.menu.substr(0, 5) != "&File") {
      finish(menuBefore);
    }
    menuBefore = entry.menu;
    if (entry.separatorBefore) {
      MenuAt(entry.menu)->addSeparator();
    }
    const Command* command = FindCommand(entry.id);
    command != nullptr ? place(*command, entry.menu) : Add(nullptr, entry.id, entry.menu, entry.caption);
  }
  for (const Command& command : AllCommands()) {
    const bool missing = !placed[static_cast<std::size_t>(&command - AllCommands().data())];
    if (missing && !command.menu.empty() && !IsOfGraph(command)) {
      place(command, command.menu);
    }
  }
}

QMenu* Menus::Top(std::string_view caption) {
  return MenuAt(caption);
}

QMenu* Menus::MenuAt(std::string_view path) {
  const auto known = menus_.find(path);
  if (known != menus_.end()) {
    return known->second;
  }
  const std::size_t slash = path.rfind('/');
  const QString caption = ToQt(slash == std::string_view::npos ? path : path.substr(slash + 1));
  QMenu* menu = slash == std::string_view::npos ? bar_->addMenu(caption)
                                                : MenuAt(path.substr(0, slash))->addMenu(caption);
  menu->setToolTipsVisible(true);
  menus_.emplace(path, menu);
  return menu;
}

void Menus::Add(const Command* command, std::string_view id, std::string_view menu,
                std::string_view caption) {
  QAction* action = MenuAt(menu)->addAction(ToQt(caption));
  const QString plain = ToQt(WithoutMnemonic(caption));
  if (command == nullptr || !IsBuilt(*command)) {
    action->setStatusTip(QObject::tr("%1: not in this version yet").arg(plain));
    action->setToolTip(QObject::tr("Not in this version yet"));
    action->setEnabled(false);
  } else {
    action->setStatusTip(plain + QStringLiteral("   (") + ToQt(id) + QStringLiteral(")"));
    QObject::connect(action, &QAction::triggered, action, [this, command] { run_(*command); });
    entries_.push_back({command, action});
  }
  if (first_.emplace(id, action).second && command != nullptr) {
    action->setShortcut(ShortcutOf(id));
  }
}

QAction* Menus::Of(std::string_view id) const {
  const auto it = first_.find(id);
  return it == first_.end() ? nullptr : it->second;
}

void Menus::Update(const Workbench& workbench) {
  for (const Entry& entry : entries_) {
    const Command& command = *entry.command;
    entry.action->setEnabled(IsPossible(command, workbench));
    if (command.whyNot != nullptr) {
      const char* why = command.whyNot(workbench);
      entry.action->setToolTip(ToQt(why != nullptr ? why : WithoutMnemonic(command.caption)));
    }
    if (command.checked != nullptr) {
      entry.action->setCheckable(true);
      entry.action->setChecked(command.checked(workbench));
    }
  }
}

}  // namespace velmora::ui
