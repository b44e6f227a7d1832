#pragma once

#include <map>
#include <string_view>

#include "graph/graph_view.hpp"

namespace velmora::ui {

/// Whether what a menu entry stands for is so now.
using Mark = bool (*)(const GraphView& view, const Workbench& workbench);

/// By the id of the command, those of an open graph that put it into a state.
const std::map<std::string_view, Mark>& GraphMarks();

}  // namespace velmora::ui
