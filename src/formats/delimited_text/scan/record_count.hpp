#pragma once

#include <cstdint>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "formats/text_source.hpp"

namespace velmora {

/// The records of a text file, which start behind the lines skipped.
struct RecordCount {
  std::int64_t records = 0;
  /// Blank lines that a record follows.
  std::int64_t blankLines = 0;
  std::int64_t firstBlankLine = 0;  // its number in the file, from 1
  std::int64_t recordsBeforeBlank = 0;
};

/// Counts to the end of the file, or to where the user stops it and keeps what was counted.
/// Returns false when the read is to be given up. Throws FileError.
bool CountRecords(Workbench& workbench, ProgressPanel& panel, TextSource& source, std::int64_t linesToSkip,
                  RecordCount& count);

}  // namespace velmora
