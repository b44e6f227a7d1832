#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Filters by design, and the cut-off that suits a channel.
std::span<const Command> DesignCommands();

}  // namespace velmora
