#pragma once

#include "run/recipe.hpp"
#include "run/yaml_reader.hpp"

namespace velmora {

/// A step with `collect`.
CollectStep ReadCollectStep(YamlReader& reader, const YAML::Node& step);

}  // namespace velmora
