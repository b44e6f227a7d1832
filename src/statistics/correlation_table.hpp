#pragma once

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for two and more channels and shows frmCorrelation: every pair, and the matrix of all.
void ShowCorrelations(Workbench& workbench, SampleRange range);

}  // namespace velmora
