#include "graph/graph_choose_form.hpp"

#include <algorithm>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "graph/view_window.hpp"

namespace velmora {

GraphChooseForm::GraphChooseForm(Workbench& workbench)
    : Form("frmGraphChoose", "Graph Channel Selection"),
      workbench_(workbench),
      channels_(workbench.chooser.ChanSelected),
      scale_(workbench.graph.GraphScaleChoice),
      window_(workbench.graph.ViewDuration),
      pan_(workbench.graph.PanSize),
      maximized_(workbench.graph.GraphWindowMaximized) {
  for (std::size_t c = 1; c < colours_.size(); ++c) {
    colours_[c] = workbench.trial.ChanColour[c];
  }
  fields_ = {
      {.name = "channels", .caption = "Channels", .target = &channels_, .isSelection = true},
      {.name = "lstColours",
       .caption = "Select colour",
       .target = &colours_,
       .lowest = 1,
       .highest = kColours,
       .isColour = true},
      {.name = "CmbScale",
       .caption = "Vertical scale",
       .target = &scale_,
       .choices = {"Autoscale", "+/- 10 V", "0 to 100%", "+/- 100%", "Include zero", "+/- | Maximum |",
                   "No change"}},
      {.name = "TxtWindow", .caption = "Duration: (seconds)", .target = &window_, .units = "s", .lowest = 0},
      {.name = "TxtPan", .caption = "Pan size:", .target = &pan_, .units = "s", .lowest = 0},
      {.name = "chkMaximized", .caption = "&Maximize window", .target = &maximized_}};
  buttons_ = {{.caption = "O&K", .role = FormButton::Role::Accept, .press = [this] { return Accept(); }}};
  AddSelectionButton("&All", [this] { SelectPage(true); });
  AddSelectionButton("&None", [this] { channels_.fill(false); });
  AddSelectionButton("&Deselect", [this] { SelectPage(false); });
  AddSelectionButton("&Invert Selections", [this] {
    std::transform(channels_.begin(), channels_.end(), channels_.begin(), [](bool on) { return !on; });
  });
  if (workbench.trial.NChan > 8) {
    AddSelectionButton("&1st 8", [this] { SelectEight(0); });
    AddSelectionButton("&2nd 8", [this] { SelectEight(8); });
  }
  if (workbench.trial.NChan > kPageChannels) {
    AddSelectionButton("&Next channels", [this] { NextChannelPage(workbench_); });
  }
  buttons_.push_back({.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }});
}

void GraphChooseForm::AddSelectionButton(std::string caption, std::function<void()> select) {
  buttons_.push_back({.caption = std::move(caption), .press = [select = std::move(select)] {
                        select();
                        return false;
                      }});
}

void GraphChooseForm::SelectPage(bool on) {
  for (int c = std::max<int>(workbench_.FirstChanShown, 1); c <= workbench_.LastChanShown; ++c) {
    channels_[c] = on;
  }
}

void GraphChooseForm::SelectEight(int first) {
  const int from = std::max<int>(workbench_.FirstChanShown, 1) + first;
  for (int c = from; c < from + 8 && c <= workbench_.LastChanShown; ++c) {
    channels_[c] = true;
  }
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
  channels_[0] = false;
  std::fill(end, channels_.end(), false);
  workbench_.chooser.ChanSelected = channels_;
  for (std::size_t c = 1; c <= static_cast<std::size_t>(workbench_.trial.NChan); ++c) {
    workbench_.trial.ChanColour[c] = static_cast<std::int16_t>(RoundHalfEven32(colours_[c]));
  }
  workbench_.graph.GraphScaleChoice = scale_;
  workbench_.graph.ViewDuration = window_;
  workbench_.graph.PanSize = pan_;
  workbench_.graph.GraphWindowMaximized = maximized_;
  SettleViewWindow(workbench_);
  accepted_ = true;
  return true;
}

bool GraphChooseForm::Ask() {
  accepted_ = false;
  Show(workbench_);
  return accepted_;
}

}  // namespace velmora
