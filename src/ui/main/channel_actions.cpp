#include "ui/main/channel_actions.hpp"

#include <QMenu>

#include "app/command_table.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

void ChannelActions::EditName(const char* id, int channel, const QString& typed) {
  if (typed.trimmed().isEmpty()) {
    return;
  }
  person_.AnswerNextPick([channel, text = ToStd(typed)](ChannelPicker& picker) {
    picker.SetName(channel, text);
    return std::string("OK");
  });
  runner_.Run(id);
  person_.AnswerNextPick(nullptr);  // had it not been asked for, it must not answer something else
}

void ChannelActions::Add(QMenu* menu, std::string_view id) {
  if (const Command* command = FindCommand(id)) {
    QObject::connect(menu->addAction(ToQt(command->caption)), &QAction::triggered, menu,
                     [this, command] { runner_.Run(*command); });
  }
}

void ChannelActions::AddFamilies(QMenu* menu) {
  QMenu* math = menu->addMenu(QObject::tr("&Mathematical functions"));
  QMenu* smooth = menu->addMenu(QObject::tr("Sm&oothing"));
  QMenu* bias = menu->addMenu(QObject::tr("&Bias Removal"));
  for (const Command& command : AllCommands()) {
    QMenu* to = command.id.starts_with("math.")     ? math
                : command.id.starts_with("smooth.") ? smooth
                : command.id.starts_with("bias.")   ? bias
                                                    : nullptr;
    if (to != nullptr) {
      Add(to, command.id);
    }
  }
}

void ChannelActions::ShowMenu(int channel, const QPoint& at) {
  QMenu menu;
  QObject::connect(menu.addAction(QObject::tr("&Graph this channel")), &QAction::triggered, &menu,
                   [this, channel] { runner_.ShowChannel(channel); });
  for (const char* id : {"graph.single", "analysis.scaling", "analysis.low-pass", "analysis.high-pass"}) {
    Add(&menu, id);
  }
  menu.addSeparator();
  AddFamilies(&menu);
  menu.addSeparator();
  Add(&menu, "edit.labels");
  Add(&menu, "edit.units");
  menu.exec(at);
}

}  // namespace velmora::ui
