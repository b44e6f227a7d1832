#pragma once

#include "core/workbench.hpp"
#include "dsp/filter_section.hpp"

namespace velmora {

/// The boxes that a verdict calls for, none when the filter was accepted without a warning.
/// `channel` from 1.
void ShowVerdict(Workbench& workbench, int channel, const FilterVerdict& verdict);

}  // namespace velmora
