#pragma once

#include <span>

#include "core/workbench.hpp"

namespace velmora {

/// Channel k becomes what channel order[k-1] was: samples, what the trial keeps of it, and what outlives a
/// command (cut-offs, scales, levels, means, thresholds, events, graphs, the picker's marks and values).
/// Channels that are not listed go. Reduced forces and their plates are no longer known; plates that the file
/// describes stay known while their raw channels move together. Labels of the file before, which can be
/// recalled, stay where they are.
void ArrangeChannels(Workbench& workbench, std::span<const int> order);

/// All plates that the file describes lie so many channels further on.
void MoveFilePlates(Workbench& workbench, int channels);

/// Nothing outlives a command of this channel: it is a new one.
void ForgetChannel(Workbench& workbench, int channel);

}  // namespace velmora
