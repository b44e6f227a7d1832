#pragma once

#include <span>

#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// Puts the plates that a file describes into the plate table, and where their channels are into FilePlates:
/// those of which all channels are among `channels` (from 0, ascending) and lie one behind the other. NPlates
/// counts them. What is left out is told by a notice.
void TakePlates(Workbench& workbench, const Recording& recording, std::span<const int> channels);

}  // namespace velmora
