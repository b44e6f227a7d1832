#pragma once

#include "run/recipe.hpp"
#include "run/yaml_reader.hpp"

namespace velmora {

/// A step with `view`.
ViewStep ReadViewStep(YamlReader& reader, const YAML::Node& step);

}  // namespace velmora
