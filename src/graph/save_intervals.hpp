#pragma once

#include <vector>

#include "core/trial/helpers.hpp"
#include "graph/time_view.hpp"

namespace velmora {

/// The samples from each cursor to the next one in time, both included. Cursors at one sample bound nothing
/// between them.
std::vector<SampleRange> IntervalsBetweenCursors(const TimeView& view);

/// Saves every interval between neighbouring cursors as a native binary file of its own: asks for a name and
/// puts a number behind it, "stride-01.vmb", as many digits as the last one has, two at least. Files that are
/// there are replaced after a question. Each file is whole or not there; Cancel and a file that cannot be
/// written keep those before it, which is told.
void SaveIntervals(Workbench& workbench, TimeView& view);

}  // namespace velmora
