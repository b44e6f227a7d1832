#pragma once

#include <functional>
#include <span>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Whether the trial has places for `count` more channels. Otherwise says "No Free Channels" and how many
/// there are.
bool HasFreeChannels(Workbench& workbench, int count);

/// What is told of a channel that an analysis makes; both are cut to what a trial keeps.
struct NewChannel {
  std::string label;
  std::string units;
};

/// Appends channels of zeros at the trial's rate, with gain 1, offset 0 and no autozero, shows the first
/// page, and marks the trial as changed. Returns the first one's index. There must be places.
int AppendChannels(Workbench& workbench, std::span<const NewChannel> channels);

}  // namespace velmora
