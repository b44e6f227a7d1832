#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

// Files that no reader takes: what the user is told, and whether the text parser may try.

/// BioBench binary (.BB): not implemented; Yes tries the parser.
void AskParseBioBench(Workbench& workbench, ProgressPanel& panel);
/// .DAT and .191 with other contents than their reader's; Yes tries the parser.
void AskParseUnknownContents(Workbench& workbench, ProgressPanel& panel);
/// Any other extension; Yes looks for a text format.
void AskParseUnknownExtension(Workbench& workbench, ProgressPanel& panel);

void TellDaff(Workbench& workbench, ProgressPanel& panel);
void TellOptotrak(Workbench& workbench, ProgressPanel& panel);
void TellDelsysEmt(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
