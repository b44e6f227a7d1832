#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Whether no worksheet can take this trial, which has been told then, with the samples that fit.
bool WorksheetRefuses(Workbench& workbench);

/// Asks for a name and saves the whole trial as a Lotus 1-2-3 worksheet: title, labels, units, then a row a
/// sample with its time in the first column. The name's extension tells the version: .wks the first (2,045
/// samples), else .wk1 (8,189). Texts are ASCII, other characters "?". Source: "Lotus File Formats for 1-2-3,
/// Symphony & Jazz" (1986). Throws FileError, with workbench.OutputFileName set.
void WriteWorksheet(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
