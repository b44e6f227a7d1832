#pragma once

#include <span>

#include "core/command.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {

/// The threshold menu.
std::span<const Command> ThresholdCommands();

/// T: the selected graph's channel gets the threshold that its line was dragged to, or one of the samples
/// between the cursors, as is answered.
void ChangeThreshold(Workbench& workbench, MultiView& view);

}  // namespace velmora
