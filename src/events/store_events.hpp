#pragma once

#include <vector>

#include "core/workbench.hpp"

namespace velmora {

/// What an analysis found in a channel, first to last.
struct FoundEvents {
  int channel = 1;
  std::vector<EventTimes> times;
};

/// The b-th of each channel becomes record b of the table of events, which begins when there is none. Times
/// that these channels have there are replaced, after a question.
void StoreEvents(Workbench& workbench, const std::vector<FoundEvents>& found);

}  // namespace velmora
