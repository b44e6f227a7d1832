#include "ui/graph/channel_windows.hpp"

#include <algorithm>
#include <utility>

#include "core/trial/helpers.hpp"
#include "ui/screen_room.hpp"

namespace velmora::ui {

void ChannelWindows::ForgetClosed() {
  std::erase_if(windows_, [](const QPointer<OneChannelWindow>& window) {
    return window.isNull() || !window->isVisible();
  });
}

void ChannelWindows::Open(int channel) {
  ForgetClosed();
  const auto open = std::find_if(
      windows_.begin(), windows_.end(),
      [channel](const QPointer<OneChannelWindow>& window) { return window->Channel() == channel; });
  OneChannelWindow* window = open != windows_.end() ? open->data() : Make(channel);
  if (window != nullptr) {
    ComeForward(*window);
  }
}

OneChannelWindow* ChannelWindows::Make(int channel) {
  std::string fault;
  try {
    auto* window = new OneChannelWindow(workbench_, channel, parent_);
    Place(*window);
    windows_.emplace_back(window);
    return window;
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  } catch (const std::exception& error) {
    fault = error.what();
  }
  ShowFailure(workbench_, {.title = "Graph", .text = fault, .icon = Icon::Stop});
  return nullptr;
}

// Each a little lower than the one before, so that all can be seen and taken hold of.
void ChannelWindows::Place(QWidget& window) const {
  constexpr QPoint kFirst{120, 90};
  constexpr int kStep = 32;
  constexpr std::size_t kInARow = 8;
  const int step = kStep * static_cast<int>(windows_.size() % kInARow);
  const QRect room = RoomOn(parent_ != nullptr ? *parent_ : window);
  const QPoint corner = (parent_ != nullptr ? parent_->pos() : room.topLeft()) + kFirst + QPoint(step, step);
  window.move(std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() - window.width())),
              std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() - window.height())));
}

void ChannelWindows::Refresh() {
  const std::vector<QPointer<OneChannelWindow>> open = windows_;  // a message may let others open
  for (const QPointer<OneChannelWindow>& window : open) {
    if (!window.isNull() && window->isVisible()) {
      window->Refresh();
    }
  }
  ForgetClosed();
}

void ChannelWindows::CloseAll() {
  for (const QPointer<OneChannelWindow>& window : std::exchange(windows_, {})) {
    delete window.data();
  }
}

}  // namespace velmora::ui
