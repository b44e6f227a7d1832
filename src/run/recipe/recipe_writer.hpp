#pragma once

#include <string>
#include <vector>

#include "run/recipe/recipe.hpp"

namespace velmora {

/// The YAML that a recipe is read from. Strings stand in double quotes, numbers keep all their digits.
std::string RecipeText(const Recipe& recipe);

/// The same with variables in place of the files, so that the recipe serves other inputs: the file of the
/// first load is ${input}, and a file that was saved goes to ${out}, with ${stem} where its name began
/// with the name of the input.
std::vector<Step> ForAnyInput(std::vector<Step> steps);

}  // namespace velmora
