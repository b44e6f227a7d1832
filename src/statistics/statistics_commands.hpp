#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The statistics menus of a graph: of all data, and of those between its cursors.
std::span<const Command> StatisticsCommands();

}  // namespace velmora
