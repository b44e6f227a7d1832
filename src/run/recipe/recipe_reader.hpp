#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "run/recipe/recipe.hpp"
#include "run/recipe/variables.hpp"

namespace velmora {

/// What is wrong in a line of a recipe.
struct RecipeFault {
  int line = 0;
  std::string why;
};

/// A recipe that cannot be understood. what() is a line "NAME:LINE: the reason" for each of its faults.
class RecipeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The faults, each once and in the order of their lines, as RecipeError tells them.
std::string FaultText(std::string_view name, std::vector<RecipeFault> faults);

/// A recipe as far as it can be read, and what cannot.
struct ReadingOfRecipe {
  Recipe recipe;
  std::vector<RecipeFault> faults;
};

/// Reads a recipe (YAML) and replaces the variables in every string of it. Faults: no YAML, a key that a
/// recipe does not have or has twice, a value of the wrong shape, an unknown variable.
ReadingOfRecipe TryReadRecipe(std::string_view text, const Variables& variables);

/// The same, where a recipe with a fault is none. `name` is what messages call it. Throws RecipeError.
Recipe ReadRecipe(std::string_view text, std::string_view name, const Variables& variables);

}  // namespace velmora
