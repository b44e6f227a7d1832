#pragma once

#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// The spectrum that stands in the workbench as a Fourier transform file (.FTF) of the channel it is of.
std::string FourierFileText(const Workbench& workbench, int channel);

}  // namespace velmora
