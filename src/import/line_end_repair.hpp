#pragma once

#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Whether a text file ends its lines in a way that cannot be read: CR CR LF or LF CR at the first
/// line's end, or neither CR nor LF anywhere but vertical tabs, form feeds or record separators.
/// Throws FileError.
bool HasIncompleteLineEnds(const std::string& path);

/// Offers to end every line of trial.FileName with CR LF. The new file takes the name; the original
/// is kept under another one or erased, as the user chooses. Returns false when the user declines or
/// the file cannot be written. Throws FileError when it cannot be read.
bool OfferRepair(Workbench& workbench);

}  // namespace velmora
