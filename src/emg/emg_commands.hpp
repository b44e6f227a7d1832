#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The electromyographer's menu. Entries that stand for commands of other menus run these.
std::span<const Command> EmgCommands();

}  // namespace velmora
