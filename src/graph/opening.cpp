#include "graph/opening.hpp"

#include <algorithm>

namespace velmora {

bool ConfirmMany(Workbench& workbench) {
  const ChannelFlags& selected = workbench.chooser.ChanSelected;
  const auto end = selected.begin() + workbench.trial.NChan + 1;
  if (std::count(selected.begin() + 1, end, true) <= 16) {
    return true;
  }
  const Box box{.title = ">16 Channels Selected",
                .text = "Press OK to confirm graphing greater than 16 signals.",
                .icon = Icon::Question,
                .buttons = {Button::OK, Button::Cancel}};
  return workbench.questions.AskBox(box) == Button::OK;
}

void RestoreRate(Trial& trial) {
  if (trial.Rate == 0.0) {
    trial.Rate = trial.PreviousRate;
  }
}

}  // namespace velmora
