#pragma once

#include <span>

#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// Puts the plates that a file describes into the plate table and counts them in NPlates: those from the
/// first on whose channels are all among `channels` (from 0, ascending) and lie one behind the other, plate
/// behind plate, as the reduction takes them. What is left out is told by a notice.
void TakePlates(Workbench& workbench, const Recording& recording, std::span<const int> channels);

}  // namespace velmora
