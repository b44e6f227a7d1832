#pragma once

#include <cstdint>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Shows the first 75 lines of a text file, each with a box that is checked while the line is
/// skipped. Left with its accepting button, the lines to skip end with the last one checked.
void ShowHeader(Workbench& workbench, const std::string& path, std::int32_t& linesToSkip);

}  // namespace velmora
