#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// "Integrate by Epoch": asks for the range, the width and the channels, and shows each epoch's integrals,
/// which may take the place of the samples.
void IntegrateByEpoch(Workbench& workbench);

}  // namespace velmora
