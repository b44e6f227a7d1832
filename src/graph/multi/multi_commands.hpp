#pragma once

#include <span>

#include "core/command.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Opening the multi-axis graph, and the commands that it alone has but for those of thresholds and events.
std::span<const Command> MultiCommands();

/// A pan or zoom of the menu moves the graph that was clicked; before the first click it tells so and does
/// nothing. Returns whether it may go on.
bool MayPanOrZoom(Workbench& workbench);

}  // namespace velmora
