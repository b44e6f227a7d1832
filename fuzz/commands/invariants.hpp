#pragma once

#include "core/workbench.hpp"

namespace velmora::fuzz {

/// Breaks off when what the program keeps of its trial does not hold together.
void WantWhole(const Workbench& workbench);

}  // namespace velmora::fuzz
