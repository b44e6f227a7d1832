#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The menu of the force plates.
std::span<const Command> PlateCommands();

}  // namespace velmora
