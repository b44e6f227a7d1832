#pragma once

#include <map>
#include <string_view>

#include "graph/single_view.hpp"

namespace velmora::ui {

/// Whether what a menu entry stands for is so now.
using Mark = bool (*)(const SingleView& view, const Workbench& workbench);

/// By the id of the command, those of the single-axis graph that put it into a state.
const std::map<std::string_view, Mark>& GraphMarks();

}  // namespace velmora::ui
