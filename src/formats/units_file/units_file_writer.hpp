#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and saves labels, units, factors, cut-offs and thresholds as a units file (.VMU).
/// Throws FileError, with workbench.OutputFileName set, when the file cannot be written; the file on
/// disk is then as it was.
void WriteUnitsFile(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
