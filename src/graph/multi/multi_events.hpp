#pragma once

#include <span>

#include "core/command.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {

/// Onsets in the cursor menu, the event menu and their help.
std::span<const Command> EventCommands();

/// A right click: all channels that are shown go into the current record, after a question when it has times
/// already. Nothing while tracking is off or there is no cursor.
void RecordAll(Workbench& workbench, const MultiView& view);

/// A double click: the channel of one graph.
void RecordGraph(Workbench& workbench, const MultiView& view, int graph);

}  // namespace velmora
