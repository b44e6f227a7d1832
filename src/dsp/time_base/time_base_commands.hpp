#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Re-sampling, reversal, shift and rotation, and what the abscissa counts.
std::span<const Command> TimeBaseCommands();

}  // namespace velmora
