#pragma once

#include <cstddef>
#include <string>

#include "commands/own_place.hpp"
#include "core/workbench.hpp"
#include "run/history/history.hpp"

namespace velmora::fuzz {

/// Breaks off unless going to this line of the history and back leads to the same trial, and touches no file.
void WantWayBack(History& history, const Workbench& workbench, const OwnPlace& place, std::size_t line);

/// Breaks off unless a program just started comes to the same trial by the recipe of the history.
void WantSameByRecipe(const History& history, const Workbench& workbench, const OwnPlace& place,
                      const std::string& input);

}  // namespace velmora::fuzz
