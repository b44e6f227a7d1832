#pragma once

#include <string>

#include "core/trial/trial.hpp"

namespace velmora {

/// What people call the format that the trial was read from: "C3D", "Tab-separated text".
std::string FormatNameOf(const Trial& trial);

}  // namespace velmora
