#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// The Channel menu: which channels there are, in which order, and channels made of others.
std::span<const Command> ChannelCommands();

}  // namespace velmora
