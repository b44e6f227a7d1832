#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and saves the whole trial as a C3D file (C3D User Guide, Motion Lab Systems): the analog
/// channels as 32-bit floats, Intel byte order, without points; labels in UTF-8. Events in the header lines
/// go along. The abscissa does not: a file counts seconds from 0 at its rate, which it holds in 32 bits; what
/// differs is told. Throws FileError, with workbench.OutputFileName set.
void WriteC3d(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
