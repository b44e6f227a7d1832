#pragma once

#include <stdexcept>

#include "core/workbench.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

class NoSuchKey : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// Does in the view that is open what a person would. Throws NoSuchKey, std::invalid_argument or
/// std::out_of_range when the view has no such key, cursor or graph, std::runtime_error when a picture cannot
/// be drawn or written.
void DoGesture(Workbench& workbench, const ViewStep& step);

}  // namespace velmora
