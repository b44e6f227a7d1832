#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Formats that cannot take every trial. Each returns whether the save ends here and has told why.
bool BioWareRefuses(Workbench& workbench);
bool Velmora1BinaryRefuses(Workbench& workbench);
bool ReducedForcesRefuses(Workbench& workbench);

}  // namespace velmora
