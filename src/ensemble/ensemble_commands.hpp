#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Averaging of trials.
std::span<const Command> EnsembleCommands();

}  // namespace velmora
