#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and saves the whole trial as Visual3D's FSV or TSV text: keyed lines, then a line of
/// values a sample in the shortest form that reads back as the same number, tabs, CR LF. Throws FileError,
/// with workbench.OutputFileName set.
void WriteFsv(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
