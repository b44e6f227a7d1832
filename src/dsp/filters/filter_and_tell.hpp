#pragma once

#include "core/workbench.hpp"
#include "dsp/filters/recursive_filter_lanes.hpp"

namespace velmora {

/// Filters the trial's channels under a panel, then shows the box of every channel that has one.
void FilterAndTell(Workbench& workbench, const ChannelsFilter& filter);

}  // namespace velmora
