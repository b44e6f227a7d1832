#include "graph/one_channel_view.hpp"

#include <array>
#include <stdexcept>

#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "graph/copied_channels.hpp"
#include "graph/view_keys.hpp"

namespace velmora {
namespace {

constexpr const char* kKeys =
    "C = start Calculator\nF1 or ? = show this help screen\nF2 or R = reset\nF3  = full-screen\n"
    "F6  = full width\nF7  = full height";

}  // namespace

void ShowOneChannelKeys(Workbench& workbench) {
  ShowKeys(workbench, kKeys);
}

OneChannelView::OneChannelView(Workbench& workbench, int channel) : workbench_(workbench), channel_(channel) {
  if (channel < 1 || channel > workbench.trial.NChan || workbench.trial.NData == 0) {
    throw std::out_of_range("There is no channel " + std::to_string(channel) + ".");
  }
  graph_.SidebarVisible = false;  // one trace needs no list
  Take();
  ResetScaling();
}

void OneChannelView::Take() {
  const Trial& trial = workbench_.trial;
  CopyChannels(trial, 0, std::array{channel_}, {1, trial.NData}, shown_);
  graph_.PlotXY(shown_);
  ChannelFlags only{};
  only[1] = true;
  graph_.Show(only);
  graph_.Abscissa.Clock = workbench_.time.Base == TimeBase::HhMmSs;
  graph_.Abscissa.Caption = LabelWithUnits(trial.ChanLabel[0].Text(), AbscissaUnits(workbench_));
  graph_.Ordinate.Caption =
      LabelWithUnits(trial.ChanLabel[channel_].Text(), trial.ChanUnits[channel_].Text());
  const std::string of = Trim(trial.TrialTitle);
  graph_.Title = of.empty() ? Title() : Title() + " of " + of;
}

std::string OneChannelView::Title() const {
  return "Channel " + LabelWithUnits(shown_.ChanLabel[1].Text(), shown_.ChanUnits[1].Text());
}

bool OneChannelView::TrialChanged() {
  const Trial& trial = workbench_.trial;
  if (trial.NData == 0 || channel_ > trial.NChan) {
    return false;
  }
  const bool sameTimes = trial.NData == shown_.NData && trial.Rate == shown_.Rate;
  Take();
  if (!sameTimes) {
    graph_.AutoScaleAbscissa();
  }
  graph_.AutoScaleOrdinate();
  return true;
}

void OneChannelView::ResetScaling() {
  graph_.Track = TrackMode::None;
  graph_.AutoScaleAbscissa();
  graph_.AutoScaleOrdinate();
}

void OneChannelView::ShowRange(double left, double right, double bottom, double top) {
  graph_.ShowRange(left, right, bottom, top);
}

bool OneChannelView::DoKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  if (const std::optional<WindowRequest> request = WindowRequestOf(name)) {
    Request(*request);
  } else if (AsksForHelp(name)) {
    ShowOneChannelKeys(workbench_);
  } else if (name == "F2" || name == "R") {
    ResetScaling();
  } else {
    return false;
  }
  return true;
}

void OneChannelView::DoMove(const CursorMove& move) {
  throw std::out_of_range("there is no cursor " + std::to_string(move.cursor));
}

void OneChannelView::DoClick(const GraphClick& click) {
  if (click.how != Clicked::Twice) {
    return;
  }
  const Box box{.title = "Pan, Zoom or Reset?",
                .text = "Press Yes to pan, No to Zoom or Cancel to reset scaling.",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No, Button::Cancel}};
  switch (workbench_.questions.AskBox(box)) {
    case Button::Yes:
      SetTrack(TrackMode::PanXAndY);
      break;
    case Button::No:
      SetTrack(TrackMode::ZoomArea);
      break;
    default:
      ResetScaling();
  }
}

}  // namespace velmora
