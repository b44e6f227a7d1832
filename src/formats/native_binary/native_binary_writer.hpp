#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and a range of samples and saves the trial as a native binary file (.VMB).
/// Throws FileError, with workbench.OutputFileName set, when the file cannot be written; the file
/// on disk is then as it was.
void WriteNativeBinary(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
