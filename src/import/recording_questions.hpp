#pragma once

#include <vector>

#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

// What is to be asked of a file before its samples are read. Channels count from 0.

/// All channels of a recording of at most 64, else those that the user names, the first 64 preset. Empty:
/// cancelled.
std::vector<int> ChooseChannels(Workbench& workbench, const Recording& recording);

/// Of channels whose rates differ: keeps all (those of lower rate are to be interpolated) or the fastest
/// alone, as the user says. Returns false when the user cancels.
bool SettleRates(Workbench& workbench, const Recording& recording, std::vector<int>& channels);

/// The rate of the fastest of these channels in Hz, asked for where the file has none; 0: cancelled.
double RateOf(Workbench& workbench, const Recording& recording, const std::vector<int>& channels);

}  // namespace velmora
