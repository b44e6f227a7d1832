#include "core/trial/new_channels.hpp"

#include "core/trial/arrange_channels.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

bool HasFreeChannels(Workbench& workbench, int count) {
  const int free = kMaxChannels - workbench.trial.NChan;
  if (count <= free) {
    return true;
  }
  ShowRefusal(workbench,
              {.title = "No Free Channels",
               .text = "There are no more free channels.  This needs " + std::to_string(count) +
                       " and there are " + std::to_string(free) + ".  Erase channels with the Channel menu.",
               .icon = Icon::Exclamation});
  return false;
}

int AppendChannels(Workbench& workbench, std::span<const NewChannel> channels) {
  Trial& trial = workbench.trial;
  const int first = trial.NChan + 1;
  trial.AddChannels(static_cast<int>(channels.size()));
  int c = first;
  for (const NewChannel& made : channels) {
    trial.ChanLabel[c] = made.label;
    trial.ChanUnits[c] = made.units;
    trial.ChanNumber[c] = static_cast<std::int16_t>(c);
    trial.ChanColour[c] = static_cast<std::int16_t>(c % kColours + 1);
    trial.ChanAutozero[c] = 0;
    ForgetChannel(workbench, c);
    ++c;
  }
  ShowFirstChannelPage(workbench);
  MarkChanged(workbench, true);
  return first;
}

}  // namespace velmora
