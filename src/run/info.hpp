#pragma once

#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// The trial and its state as one JSON object, indented, with a line end: the same names as in the
/// program, numbers with all their digits, yes/no flags as -1 and 0, not finite as null. Samples are
/// not in it.
std::string InfoText(const Workbench& workbench);

}  // namespace velmora
