#pragma once

#include "core/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Reads the native binary file (.VMB) named by trial.FileName. A file that cannot be read leaves
/// NData 0 after its message; missing samples at the end stay 0.
void ReadNativeBinary(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
