#pragma once

#include <string>
#include <vector>

#include "run/batch/run_result.hpp"

namespace velmora {

/// A line for each warning, failure and interruption, then the counts. Line ends are '\n'.
std::string ClosingTable(const std::vector<RunResult>& results);

}  // namespace velmora
