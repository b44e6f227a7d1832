#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Every way of smoothing a channel in place.
std::span<const Command> SmoothCommands();

}  // namespace velmora
