#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// What becomes of a pan above the window: 0, which pans to the next window, or the window itself.
enum class LongPan { NextWindow, Window };

/// ViewDuration and PanSize as typed become ones that fit the trial: a window of 0 or above Duration
/// is all of it, a pan above Duration half of it, and a pan above the window as `longPan` says.
void SettleViewWindow(Workbench& workbench, LongPan longPan = LongPan::NextWindow);

}  // namespace velmora
