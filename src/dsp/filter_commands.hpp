#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The recursive filters: both direct commands and the dialogue.
std::span<const Command> FilterCommands();

}  // namespace velmora
