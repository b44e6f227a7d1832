#include "dsp/channel_picking.hpp"

namespace velmora {

void BeginPicking(Workbench& workbench, std::string_view prompt) {
  ChooserState& chooser = workbench.chooser;
  chooser.ChanSelected.fill(false);
  chooser.ChanConst.fill(1.0F);
  chooser.ClearModes();
  chooser.ChooserPrompt = prompt;
}

ChannelList PickChannels(Workbench& workbench, std::string_view prompt) {
  BeginPicking(workbench, prompt);
  workbench.chooser.ChooserSelectMode = true;
  ChannelPicker(workbench).Show();
  return SelectedChannels(workbench.trial, workbench.chooser.ChanSelected);
}

}  // namespace velmora
