#pragma once

#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// How the graph that is open stands, as far as later steps go by it: "Graph: 2 cursors at 1.500 s and
/// 4.500 s". Empty when none is open.
std::string GraphWords(const Workbench& workbench);

}  // namespace velmora
