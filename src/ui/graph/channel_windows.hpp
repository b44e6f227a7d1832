#pragma once

#include <QPointer>
#include <vector>

#include "core/workbench.hpp"
#include "ui/graph/one_channel_window.hpp"

namespace velmora::ui {

/// The windows of single channels that are open, at most one a channel.
class ChannelWindows {
 public:
  /// They appear over `parent`.
  ChannelWindows(Workbench& workbench, QWidget* parent) : workbench_(workbench), parent_(parent) {}
  ChannelWindows(const ChannelWindows&) = delete;
  ChannelWindows& operator=(const ChannelWindows&) = delete;
  ~ChannelWindows() { CloseAll(); }

  /// Opens the window of a channel, or brings it to the front. Tells the person when it cannot.
  void Open(int channel);
  /// Every window shows the trial as it is now, or closes.
  void Refresh();
  void CloseAll();

 private:
  OneChannelWindow* Make(int channel);
  void ForgetClosed();
  void Place(QWidget& window) const;

  Workbench& workbench_;
  QWidget* parent_;
  std::vector<QPointer<OneChannelWindow>> windows_;  // delete themselves when they are closed
};

}  // namespace velmora::ui
