#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The menu Fourier analysis, its windows first.
std::span<const Command> SpectraCommands();

}  // namespace velmora
