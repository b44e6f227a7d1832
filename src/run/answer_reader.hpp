#pragma once

#include <vector>

#include "run/recipe.hpp"
#include "run/yaml_reader.hpp"

namespace velmora {

/// The answers of a step; none when it has no `answers`.
std::vector<Answer> ReadAnswers(YamlReader& reader, const YAML::Node& step);

}  // namespace velmora
