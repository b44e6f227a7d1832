#include "statistics/statistics_pickers.hpp"

#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/channel_picking.hpp"

namespace velmora {

ChannelList PickForTable(Workbench& workbench, std::string_view prompt) {
  const bool changed = workbench.trial.FileChanged;
  ChannelList channels = workbench.trial.NChan == 1 ? ChannelList{1} : PickChannels(workbench, prompt);
  MarkChanged(workbench, changed);
  return channels;
}

ChannelList PickSeveral(Workbench& workbench, std::string_view prompt) {
  const bool changed = workbench.trial.FileChanged;
  ChannelList channels = PickChannels(workbench, prompt);
  MarkChanged(workbench, changed);
  if (channels.size() < 2) {
    if (!workbench.chooser.ChooserCancelled) {
      RefuseTooFewChannels(workbench, 2);
    }
    return {};
  }
  return channels;
}

}  // namespace velmora
