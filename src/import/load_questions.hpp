#pragma once

#include <string>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

struct Format;

// Files that no reader takes: what the user is told, and whether the text parser may try.

/// BioBench binary (.BB): not implemented; Yes tries the parser.
void AskParseBioBench(Workbench& workbench, ProgressPanel& panel);
/// .DAT and .191 with other contents than their reader's; Yes tries the parser.
void AskParseUnknownContents(Workbench& workbench, ProgressPanel& panel);
/// Any other extension; Yes looks for a text format.
void AskParseUnknownExtension(Workbench& workbench, ProgressPanel& panel);

/// A format whose layout is not public, by its row: what to do instead. Where the file holds text, Yes tries
/// the parser.
void AskParseUnpublished(Workbench& workbench, ProgressPanel& panel, const Format& format);

/// A text whose header is not what its format's is, and why. Yes tries the parser.
void AskParseNotUnderstood(Workbench& workbench, ProgressPanel& panel, const Format& format,
                           const std::string& why);

void TellDaff(Workbench& workbench, ProgressPanel& panel);
void TellOptotrak(Workbench& workbench, ProgressPanel& panel);
void TellDelsysEmt(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
