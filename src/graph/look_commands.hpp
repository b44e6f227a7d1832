#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Grid, background, line, point and axis menus of the single-axis graph.
std::span<const Command> LookCommands();

}  // namespace velmora
