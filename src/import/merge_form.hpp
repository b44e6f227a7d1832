#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The merge dialogue: sets the current trial aside for the next file, or, once that file is loaded,
/// joins the two.
void ShowMergeDialogue(Workbench& workbench);

}  // namespace velmora
