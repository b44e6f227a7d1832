#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Ask whether title, labels and times are wanted and for a name, and save the whole trial as one line
/// a sample: separated by ", " or tabs with all digits of every value, or by two blanks with five
/// decimals. UTF-8, lines end with LF.
/// Throw FileError, with workbench.OutputFileName set, when the file cannot be written; the file on
/// disk is then as it was.
void WriteCommaSeparated(Workbench& workbench, ProgressPanel& panel);
void WriteSpaceDelimited(Workbench& workbench, ProgressPanel& panel);
void WriteTabDelimited(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
