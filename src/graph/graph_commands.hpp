#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Opening the single-axis graph, and its menus and buttons but for those of the looks and of crop.
std::span<const Command> GraphCommands();

}  // namespace velmora
