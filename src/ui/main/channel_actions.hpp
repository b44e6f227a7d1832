#pragma once

#include <QPoint>
#include <QString>

#include "ui/dialogs/qt_questions.hpp"
#include "ui/main/command_runner.hpp"

class QMenu;

namespace velmora::ui {

/// What can be done to a channel where the trial shows it.
class ChannelActions {
 public:
  ChannelActions(CommandRunner& runner, QtQuestions& person) : runner_(runner), person_(person) {}

  /// What is typed into the table is the answer to the command that asks for it (`id`), and so part of
  /// the history. Nothing typed changes nothing.
  void EditName(const char* id, int channel, const QString& typed);
  void ShowMenu(int channel, const QPoint& at);

 private:
  void Add(QMenu* menu, std::string_view id);
  void AddFamilies(QMenu* menu);

  CommandRunner& runner_;
  QtQuestions& person_;
};

}  // namespace velmora::ui
