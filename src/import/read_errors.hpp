#pragma once

#include "core/files.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The message of every reader that cannot open or read its file; leaves NData 0.
void ShowReadError(Workbench& workbench, const FileError& error);

}  // namespace velmora
