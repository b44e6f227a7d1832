#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "run/recipe.hpp"
#include "run/variables.hpp"

namespace velmora {

/// A recipe that cannot be understood. what() is "NAME:LINE: the reason".
class RecipeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads a recipe (YAML) and replaces the variables in every string of it. `name` is what messages
/// call the recipe. Throws RecipeError: no YAML, a key that a recipe does not have or has twice, a
/// value of the wrong shape, an unknown variable.
Recipe ReadRecipe(std::string_view text, std::string_view name, const Variables& variables);

}  // namespace velmora
