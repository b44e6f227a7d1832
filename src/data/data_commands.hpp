#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The trial as numbers, and as its file described it.
std::span<const Command> DataCommands();

}  // namespace velmora
