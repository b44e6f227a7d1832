#pragma once

#include <functional>
#include <string>

#include "core/workbench.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// Does work that rewrites channels under a panel. When its Cancel is pressed the channels are as they were
/// before, and false is returned; so they are when the work throws.
bool RunCancellable(Workbench& workbench, const ChannelList& channels, const std::string& title,
                    const std::function<void(const Turn&)>& work);

/// The same for work that only reads: there is nothing to put back.
bool ReadCancellable(Workbench& workbench, const std::string& title,
                     const std::function<void(const Turn&)>& work);

}  // namespace velmora
