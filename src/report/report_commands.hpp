#pragma once

#include <span>

#include "core/command.hpp"

namespace velmora {

/// A trial, what was found in it and how, as one page to keep.
std::span<const Command> ReportCommands();

}  // namespace velmora
