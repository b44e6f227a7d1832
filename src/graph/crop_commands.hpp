#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The crop menu of the single-axis graph, in the order of the menu.
std::span<const Command> CropCommands();

}  // namespace velmora
