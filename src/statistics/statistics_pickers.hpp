#pragma once

#include <string_view>

#include "core/workbench.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Asks which channels are to be looked at; the only channel of a trial is taken without a question. The
/// trial is as changed as it was. Empty when none was selected or the picker was cancelled.
ChannelList PickForTable(Workbench& workbench, std::string_view prompt);

/// The same where it takes two and more; says so, and returns none, when fewer were selected.
ChannelList PickSeveral(Workbench& workbench, std::string_view prompt);

}  // namespace velmora
