#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The menus of impacts and of integration statistics.
std::span<const Command> ImpactCommands();

}  // namespace velmora
