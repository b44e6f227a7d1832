#pragma once

#include <optional>

#include "core/command_memory.hpp"
#include "core/questions/questions.hpp"

namespace velmora {

/// What a definition lacks before its plate can be reduced: the first rule it fails, as the box that says
/// so. Nothing when it is complete.
std::optional<Box> WhyIncomplete(const ForcePlate& plate);

}  // namespace velmora
