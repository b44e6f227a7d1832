#pragma once

#include "run/recipe/run_start.hpp"
#include "run/recipe/yaml_reader.hpp"

namespace velmora {

/// The `start` of a recipe.
RunStart ReadRunStart(YamlReader& reader, const YAML::Node& start);

}  // namespace velmora
