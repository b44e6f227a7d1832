#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Formats that cannot take every trial. Each returns whether the save ends here and has told why.
bool UnitsFileRefuses(Workbench& workbench);
bool BioWareRefuses(Workbench& workbench);
bool Velmora1BinaryRefuses(Workbench& workbench);
bool ReducedForcesRefuses(Workbench& workbench);

/// Why a format that holds raw channels cannot be saved now; nullptr when it can.
const char* WhyNotOfForces(const Workbench& workbench);

}  // namespace velmora
