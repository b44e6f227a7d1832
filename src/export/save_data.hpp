#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Entries of the save list, in menu order.
enum class SaveFormat {
  NativeAscii = 0,
  BioWare,
  CommaSeparated,
  LotusWorksheet,
  Velmora1Binary,
  ReducedForces,
  SpaceDelimited,
  TabDelimited,
  BiasValues,
  NativeBinary,
  C3d,
  UnitsFile,
  Visual3d,
  ViconAnalog,
};

/// Every save of the whole trial: asks for the file's name, writes it under the progress panel, and
/// reports what went wrong. Nothing happens without data. A save that fails changes neither the trial
/// nor the file on disk.
void SaveData(Workbench& workbench, SaveFormat format);

}  // namespace velmora
