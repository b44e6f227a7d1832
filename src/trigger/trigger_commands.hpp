#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Triggering in the single-axis graph.
std::span<const Command> TriggerCommands();

}  // namespace velmora
