#pragma once

#include "core/workbench.hpp"

namespace velmora {

// Before a graph is opened.

/// More than 16 channels are asked about. Returns whether to go on.
bool ConfirmMany(Workbench& workbench);
/// A rate of 0 becomes the one before.
void RestoreRate(Trial& trial);

}  // namespace velmora
