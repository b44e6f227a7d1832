#pragma once

#include <QPointer>
#include <functional>
#include <string_view>

#include "core/workbench.hpp"
#include "ui/dialogs/qt_questions.hpp"
#include "ui/graph/channel_windows.hpp"

class QWidget;

namespace velmora::ui {

class ViewWindow;

/// Runs commands, one at a time, and gives the views that they open their windows.
class CommandRunner {
 public:
  /// Windows of views appear over `window`.
  CommandRunner(Workbench& workbench, QtQuestions& person, QWidget* window);
  CommandRunner(const CommandRunner&) = delete;
  CommandRunner& operator=(const CommandRunner&) = delete;
  ~CommandRunner();

  /// What is selected where the trial shows its channels: commands on channels start with it.
  std::function<ChannelFlags()> selectedChannels;

  /// Nothing while another command runs: they do not run inside each other. Returns whether a graph was asked
  /// for at its end, and offered.
  bool Run(const Command& command);
  bool Run(std::string_view id);
  /// Work that is not one command but changes the trial all the same.
  void Do(const std::function<void()>& work);
  [[nodiscard]] bool Busy() const { return running_ > 0; }

  /// The graph that the options prefer.
  void OpenGraph();
  void ShowChannel(int channel) { channelWindows_.Open(channel); }
  /// The samples are others: every window of a single channel shows them.
  void RefreshChannels() { channelWindows_.Refresh(); }
  void CloseViews();
  /// The graph has been left, and what opened it comes back before its window is closed.
  void HideGraph();

 private:
  void ShowView();
  void CloseGraph();

  Workbench& workbench_;
  QtQuestions& person_;
  QWidget* window_;
  ChannelWindows channelWindows_;
  QPointer<ViewWindow> graph_;  // while a view is open; deletes itself when it is closed
  int running_ = 0;
};

}  // namespace velmora::ui
