#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

std::span<const Command> XYCommands();

}  // namespace velmora
