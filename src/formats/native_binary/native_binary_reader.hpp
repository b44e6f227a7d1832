#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Reads the native binary file (.VMB) named by trial.FileName. A file that cannot be read leaves
/// NData 0 after its message; samples that the file promises and does not hold are 0. Cancel after
/// channel i leaves a trial of i channels.
void ReadNativeBinary(Workbench& workbench, ProgressPanel& panel);

/// Takes paired graphs and the percentage time base from the view flags of the experiment record.
void ApplyViewFlags(Workbench& workbench);

}  // namespace velmora
