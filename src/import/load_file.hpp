#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The one route by which a file becomes the trial: chooses the reader for trial.FileName, runs it
/// under the progress panel and brings the trial into the state that every command relies on.
/// A load that fails leaves NData 0; the earlier trial is gone.
void LoadFile(Workbench& workbench);

}  // namespace velmora
