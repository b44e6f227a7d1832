#pragma once

#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// Channels an operation applies to, ascending, each 1..NChan.
using ChannelList = std::vector<int>;

/// Channels 1..NChan whose flag is set.
ChannelList SelectedChannels(const Trial& trial, const ChannelFlags& flags);

/// Neighbouring channels, first to last: one run of floats in every frame.
struct ChannelRun {
  int first;
  int last;
};

/// The list as runs. Operations go through memory frame by frame and through each frame run by run.
std::vector<ChannelRun> RunsOf(const ChannelList& channels);

}  // namespace velmora
