#include "graph/graph_choose_form.hpp"

#include <algorithm>

#include "core/trial/helpers.hpp"
#include "graph/view_window.hpp"

namespace velmora {

GraphChooseForm::GraphChooseForm(Workbench& workbench)
    : GraphChannelForm(workbench, "frmGraphChoose", "Graph Channel Selection"),
      scale_(workbench.graph.GraphScaleChoice) {
  AddChannelFields();
  fields_.push_back({.name = "CmbScale",
                     .caption = "Vertical scale",
                     .target = &scale_,
                     .choices = {"Autoscale", "+/- 10 V", "0 to 100%", "+/- 100%", "Include zero",
                                 "+/- | Maximum |", "No change"}});
  AddWindowFields("TxtWindow", "TxtPan", "");
  AddMaximizedField();
  AddButtons("O&K", {.page = "&Deselect", .all = "&None"});
}

bool GraphChooseForm::Accept() {
  const auto end = channels_.begin() + workbench_.trial.NChan + 1;
  if (std::find(channels_.begin() + 1, end, true) == end) {
    ShowRefusal(workbench_,
                {.title = "No Channels Selected",
                 .text = "No channels were selected.  Select one or more channels or press Cancel.",
                 .icon = Icon::Exclamation});
    return false;
  }
  TakeChannels();
  workbench_.graph.GraphScaleChoice = scale_;
  SettleViewWindow(workbench_);
  return true;
}

}  // namespace velmora
