#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Entries of the save list, in menu order.
enum class SaveFormat {
  NativeAscii = 0,
  NativeBinary = 9,
};

/// Every save of the whole trial: asks for the file's name, writes it under the progress panel, and
/// reports what went wrong. The trial is not changed by a save that fails.
void SaveData(Workbench& workbench, SaveFormat format);

}  // namespace velmora
