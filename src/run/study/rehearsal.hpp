#pragma once

#include <vector>

#include "run/recipe/recipe.hpp"
#include "run/recipe/recipe_reader.hpp"

namespace velmora {

/// Fields and buttons of forms that the recipe names and that are not there. The steps are gone through on a
/// trial made for the purpose, with the labels that the recipe names; nothing is read and nothing is written.
/// A form that only a real trial brings up is not looked into.
std::vector<RecipeFault> RehearseForms(const Recipe& recipe);

}  // namespace velmora
