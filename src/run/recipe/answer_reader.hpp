#pragma once

#include <vector>

#include "run/recipe/recipe.hpp"
#include "run/recipe/yaml_reader.hpp"

namespace velmora {

/// The answers of a step; none when it has no `answers`.
std::vector<Answer> ReadAnswers(YamlReader& reader, const YAML::Node& step);

}  // namespace velmora
