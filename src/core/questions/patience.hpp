#pragma once

#include <chrono>
#include <future>

#include "core/questions/progress.hpp"

namespace velmora {

/// Does long work that cannot stop for a turn on a thread of its own, behind the panel that asks for
/// patience, so that the window stays alive; returns what it returns and throws what it throws. It must touch
/// nothing that a window shows meanwhile.
template <typename Work>
auto WithPatience(Workbench& workbench, const Work& work) {
  constexpr std::chrono::milliseconds kTurn{10};
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  auto result = std::async(std::launch::async, work);
  while (result.wait_for(kTurn) != std::future_status::ready) {
    panel.GiveTurn();
  }
  return result.get();
}

}  // namespace velmora
