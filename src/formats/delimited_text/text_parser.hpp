#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The reader of every text file of numbers in columns. Takes trial.FileName and, for what the first
/// lines mean, the dialect in trial.FileTypeCode (anything unknown becomes 15). Shows what it found in
/// the dialogue "ASCII File Parser", reads the numbers, settles rate, times, labels and units.
/// Whatever ends the read leaves NData 0.
void ParseTextFile(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
