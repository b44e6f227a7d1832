#pragma once

#include <string_view>

#include "core/workbench.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// The picker's exchange area as every whole-channel command starts with it: no channel selected, all
/// constants 1, no mode set.
void BeginPicking(Workbench& workbench, std::string_view prompt);

/// Asks which channels; empty when none was selected or the picker was cancelled.
ChannelList PickChannels(Workbench& workbench, std::string_view prompt);

}  // namespace velmora
