#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "run/batch/arguments.hpp"

namespace velmora {

/// What would stop a run before it begins, or each of its inputs, a line a fault: "RECIPE:LINE: why" in the
/// order of the lines, then "INPUT: why". `text` is the recipe as it stands in its file. Nothing is written.
std::vector<std::string> FaultsOf(const Arguments& arguments, std::string_view text);

/// Inputs that stand for the same file as one before them.
std::vector<std::string> InputsGivenTwice(const std::vector<std::string>& inputs);

}  // namespace velmora
