#pragma once

#include <vector>

#include "core/workbench.hpp"
#include "emg/bursts/onsets_form.hpp"

namespace velmora {

/// Burst b of each channel becomes record b of the table of events, which begins when there is none: on and
/// off in seconds from the trial's first sample. Times that these channels have there are replaced, after a
/// question.
void StoreBurstEvents(Workbench& workbench, SampleRange range, const std::vector<ChannelBursts>& found);

}  // namespace velmora
