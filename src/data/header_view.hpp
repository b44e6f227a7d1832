#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Shows what the trial's file said of it: the lines of its header, and what is known of each channel.
/// Nothing is edited there.
void ShowHeader(Workbench& workbench);

}  // namespace velmora
