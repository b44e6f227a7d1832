#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// Constant levels and straight-line drift taken out of channels; the bias file both ways.
std::span<const Command> BiasCommands();

}  // namespace velmora
