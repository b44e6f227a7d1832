#pragma once

#include <span>
#include <string>

#include "core/command_report.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The trial and its state as one JSON object, indented, with a line end: the same names as in the
/// program, numbers with all their digits, yes/no flags as -1 and 0, not finite as null. Samples are
/// not in it. `done` is what was done since the trial was loaded ("Done").
std::string InfoText(const Workbench& workbench, std::span<const Deed> done = {});

}  // namespace velmora
