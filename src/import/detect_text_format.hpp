#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Finds out from the first lines of trial.FileName which text format it is and runs its reader; the
/// parser takes what is not recognised. Offers to repair line ends that no reader understands.
/// Whatever fails leaves NData 0.
void DetectTextFormat(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
