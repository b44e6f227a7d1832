#pragma once

#include <string>

#include "core/workbench.hpp"
#include "dsp/filters/recursive_filter_lanes.hpp"

namespace velmora {

/// "Low-pass Butterworth": what a pass type and a design are called in a sentence.
std::string NameOf(PassType type, FilterDesign design);

/// Filters the trial's channels under a panel, then shows the box of every channel that has one, and
/// reports what was filtered; `more` is what the words say behind the cut-off.
void FilterAndTell(Workbench& workbench, const ChannelsFilter& filter, const std::string& more = "");

}  // namespace velmora
