#pragma once

#include <string_view>
#include <vector>

#include "core/command.hpp"

namespace velmora {

/// Every command of the program, in the order of the menus.
const std::vector<Command>& AllCommands();

/// nullptr when there is no command of that id.
const Command* FindCommand(std::string_view id);

}  // namespace velmora
