#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and saves a trial that was read from a BioWare 2 file as one: the header of that file
/// (workbench.LoadedFile) with rate and time brought up to date, and counts of 10/2048 V, rounded and clipped
/// to 12 bits (how many were clipped is told). The trial must have the channels of the file. Throws
/// FileError, with workbench.OutputFileName set.
void WriteBioWare2(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
