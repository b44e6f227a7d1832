#pragma once

#include <span>

#include "core/command.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The dialogue of the recursive filters, an entry of the smoothing menu. Nothing without a trial.
void ShowButterworth(Workbench& workbench);

/// The two filters without a dialogue.
std::span<const Command> FilterCommands();

}  // namespace velmora
