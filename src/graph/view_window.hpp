#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// ViewDuration and PanSize as typed become ones that fit the trial: a window of 0 or above Duration
/// is all of it, a pan above Duration half of it, and a pan above the window 0.
void SettleViewWindow(Workbench& workbench);

}  // namespace velmora
