#pragma once

#include "core/workbench.hpp"

namespace velmora {

// Recorded times count from the first sample by the trial's rate. They stay on their samples when the rate
// comes to count something else, or the samples are others.

/// The rate was `before`, and there are `ratio` times as many intervals now.
void FollowRate(Workbench& workbench, double before, double ratio = 1.0);

/// The last sample has become the first: on- and offsets change places. The header lines tell the events that
/// came with the file accordingly.
void ReverseEventTimes(Workbench& workbench);

}  // namespace velmora
