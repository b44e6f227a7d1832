#include "graph/graph_channel_form.hpp"

#include <algorithm>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

GraphChannelForm::GraphChannelForm(Workbench& workbench, std::string name, std::string title)
    : Form(std::move(name), std::move(title)),
      workbench_(workbench),
      channels_(workbench.chooser.ChanSelected),
      window_(workbench.graph.ViewDuration),
      pan_(workbench.graph.PanSize),
      maximized_(workbench.graph.GraphWindowMaximized) {
  for (std::size_t c = 1; c < colours_.size(); ++c) {
    colours_[c] = workbench.trial.ChanColour[c];
  }
}

void GraphChannelForm::AddChannelFields() {
  fields_.push_back({.name = "channels", .caption = "Channels", .target = &channels_, .isSelection = true});
  fields_.push_back({.name = "lstColours",
                     .caption = "Select colour",
                     .target = &colours_,
                     .lowest = 1,
                     .highest = kColours,
                     .isColour = true});
}

void GraphChannelForm::AddWindowFields(const char* window, const char* pan, const char* pattern) {
  fields_.push_back({.name = window,
                     .caption = "Duration: (seconds)",
                     .target = &window_,
                     .units = "s",
                     .lowest = 0,
                     .pattern = pattern});
  fields_.push_back(
      {.name = pan, .caption = "Pan size:", .target = &pan_, .units = "s", .lowest = 0, .pattern = pattern});
}

void GraphChannelForm::AddMaximizedField() {
  fields_.push_back({.name = "chkMaximized", .caption = "&Maximize window", .target = &maximized_});
}

void GraphChannelForm::AddButtons(const char* accept, const Deselecting& deselecting) {
  buttons_.push_back({.caption = accept, .role = FormButton::Role::Accept, .press = [this] {
                        accepted_ = Accept();
                        return accepted_;
                      }});
  AddSelectionButton("&All", [this] { SelectPage(true); });
  const auto none = [this] { channels_.fill(false); };
  const auto page = [this] { SelectPage(false); };
  AddSelectionButton(deselecting.page, page);
  AddSelectionButton(deselecting.all, none);
  AddSelectionButton("&Invert Selections", [this] {
    std::transform(channels_.begin(), channels_.end(), channels_.begin(), [](bool on) { return !on; });
  });
  if (workbench_.trial.NChan > 8) {
    AddSelectionButton("&1st 8", [this] { SelectEight(0); });
    AddSelectionButton("&2nd 8", [this] { SelectEight(8); });
  }
  if (workbench_.trial.NChan > kPageChannels) {
    AddSelectionButton("&Next channels", [this] { NextChannelPage(workbench_); });
  }
  buttons_.push_back({.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }});
}

void GraphChannelForm::AddSelectionButton(std::string caption, std::function<void()> select) {
  buttons_.push_back(StayButton(std::move(caption), [this, select = std::move(select)] {
    select();
    SelectionChanged();
  }));
}

void GraphChannelForm::SelectPage(bool on) {
  for (int c = std::max<int>(workbench_.FirstChanShown, 1); c <= workbench_.LastChanShown; ++c) {
    channels_[c] = on;
  }
}

void GraphChannelForm::SelectEight(int first) {
  const int from = std::max<int>(workbench_.FirstChanShown, 1) + first;
  for (int c = from; c < from + 8 && c <= workbench_.LastChanShown; ++c) {
    channels_[c] = true;
  }
}

void GraphChannelForm::TakeChannels() {
  const auto end = channels_.begin() + workbench_.trial.NChan + 1;
  channels_[0] = false;
  std::fill(end, channels_.end(), false);
  workbench_.chooser.ChanSelected = channels_;
  for (std::size_t c = 1; c <= static_cast<std::size_t>(workbench_.trial.NChan); ++c) {
    workbench_.trial.ChanColour[c] = static_cast<std::int16_t>(RoundHalfEven32(colours_[c]));
  }
  workbench_.graph.ViewDuration = window_;
  workbench_.graph.PanSize = pan_;
  workbench_.graph.GraphWindowMaximized = maximized_;
}

bool GraphChannelForm::Ask() {
  accepted_ = false;
  Show(workbench_);
  return accepted_;
}

}  // namespace velmora
