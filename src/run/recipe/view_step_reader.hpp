#pragma once

#include "run/recipe/recipe.hpp"
#include "run/recipe/yaml_reader.hpp"

namespace velmora {

/// A step with `view`.
ViewStep ReadViewStep(YamlReader& reader, const YAML::Node& step);

}  // namespace velmora
