#pragma once

#include "core/workbench.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

/// Does in the view that is open what a person would. Throws std::invalid_argument or
/// std::out_of_range when the view has no such key, cursor or graph, std::runtime_error when a picture
/// cannot be drawn or written.
void DoGesture(Workbench& workbench, const ViewStep& step);

}  // namespace velmora
