#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Shows who and what the trial was recorded from, and keeps what is entered in the records of the
/// native binary file.
void ShowExperimentInformation(Workbench& workbench);

}  // namespace velmora
