#pragma once

#include <vector>

#include "core/workbench.hpp"
#include "ensemble/ensemble_average.hpp"

namespace velmora {

/// The abscissa of a normalised trial: percent of its duration, or seconds from 0 to `meanTime` (above 0).
void UseNormalTimeBase(Workbench& workbench, bool seconds, double meanTime);

/// The means and standard deviations in place of the trial at hand, as a new trial: channel 2j-1 is the mean
/// of the j-th channel of the average, channel 2j its deviation. Throws std::bad_alloc, and there is no
/// trial.
void MakeAveragedTrial(Workbench& workbench, const EnsembleAverage& average, bool seconds,
                       const std::string& name);

}  // namespace velmora
