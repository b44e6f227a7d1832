#pragma once

#include <functional>

#include "core/questions/progress.hpp"

namespace velmora {

/// What a kernel that can take seconds calls every few milliseconds, so that its caller can keep a window
/// alive; may be empty. It must not touch the trial.
using Turn = std::function<void()>;

/// Turns of a panel that outlives them.
inline Turn TurnOf(ProgressPanel& panel) {
  return [&panel] { panel.GiveTurn(); };
}

inline void Give(const Turn& turn) {
  if (turn) {
    turn();
  }
}

}  // namespace velmora
