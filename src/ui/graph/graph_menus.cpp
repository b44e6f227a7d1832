#include "ui/graph/graph_menus.hpp"

#include <QMenu>

#include "app/command_table.hpp"
#include "ui/graph/graph_marks.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

void GraphMenus::Add(QMenu* menu, std::string_view id, std::string_view caption) {
  const Command* command = FindCommand(id);
  QAction* action = menu->addAction(ToQt(caption.empty() && command != nullptr ? command->caption : caption));
  if (command == nullptr) {
    action->setEnabled(false);
    action->setToolTip(QObject::tr("Not in this version yet"));
    return;
  }
  action->setObjectName(ToQt(id));
  action->setCheckable(command->checked != nullptr || GraphMarks().contains(id));
  entries_.push_back({command, action});
  QObject::connect(action, &QAction::triggered, action, [this, command] { run_(*command); });
}

void GraphMenus::Update(const GraphView& view, const Workbench& workbench) {
  for (const auto& [command, action] : entries_) {
    const auto mark = GraphMarks().find(command->id);
    action->setChecked(command->checked != nullptr  ? command->checked(workbench)
                       : mark != GraphMarks().end() ? mark->second(view, workbench)
                                                    : false);
    const char* why = command->whyNot != nullptr ? command->whyNot(workbench) : nullptr;
    action->setEnabled(why == nullptr);
    action->setToolTip(why != nullptr ? ToQt(why) : QString());
  }
}

}  // namespace velmora::ui
