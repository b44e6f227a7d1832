#pragma once

#include <string_view>
#include <vector>

#include "core/command.hpp"

namespace velmora {

/// Every command of the program, in the order of the menus.
const std::vector<Command>& AllCommands();

/// nullptr when there is no command of that id.
const Command* FindCommand(std::string_view id);

/// Runs a command. What it throws (a sample outside the trial, no memory, a numerical fault) ends it
/// with a message box, which counts as a failure; CommandAbandoned passes through.
void RunCommand(Workbench& workbench, const Command& command);

}  // namespace velmora
