#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Reads the native ASCII file (.VMA, .VME) named by trial.FileName. A file that cannot be read leaves
/// NData 0 after its message; a file that ends before its header says, and Cancel, leave the samples
/// read so far. Units are not in the file: every channel is in "V".
void ReadNativeAscii(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
