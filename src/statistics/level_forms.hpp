#pragma once

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

// The tables of level and spread, a row a channel. Each asks for the channels, then shows its view.
namespace velmora {

/// frmMeans: mean, deviation, extremes and what follows from them.
void ShowMeans(Workbench& workbench, SampleRange range);

/// frmMedians: median, percentiles and the shape of the distribution.
void ShowMedians(Workbench& workbench, SampleRange range);

}  // namespace velmora
