#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The state of the program as it is before a file is read: nothing of the trial at hand outlives it but the
/// labels and units that can be recalled. The samples stay.
void ResetTrial(Workbench& workbench);

/// The one route by which a file becomes the trial: chooses the reader for trial.FileName, runs it
/// under the progress panel and brings the trial into the state that every command relies on.
/// A load that fails leaves NData 0; the earlier trial is gone.
void LoadFile(Workbench& workbench);

}  // namespace velmora
