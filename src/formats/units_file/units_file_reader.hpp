#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Asks for a units file (.VMU) and takes labels, units, factors, cut-offs and thresholds from it, for
/// as many channels as trial and file share. A file that cannot be read changes nothing.
void ReadUnitsFile(Workbench& workbench);

}  // namespace velmora
