#pragma once

#include "core/questions/result_table.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// What is known of each channel: label, units, rate, gain, offset, number, autozero.
ResultTable ChannelFacts(const Workbench& workbench);

/// Shows what the trial's file said of it: the lines of its header, and what is known of each channel.
/// Nothing is edited there.
void ShowHeader(Workbench& workbench);

}  // namespace velmora
