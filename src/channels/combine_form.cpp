#include "channels/combine_form.hpp"

#include <array>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/math/combine.hpp"

namespace velmora {
namespace {

constexpr std::array kNames = {"Sum",       "Difference", "Product", "Ratio",        "Mean",
                               "Resultant", "Minimum",    "Maximum", "Weighted sum", "Angle"};

}  // namespace

CombineForm::CombineForm(Workbench& workbench) : AnalysisForm(workbench, "frmCombine", "Combine Channels") {
  weights_.fill(1.0);
  AddChoice("optOperation", "", operation_,
            {"&Sum", "&Difference (first less the others)", "&Product", "&Ratio (first by second)", "&Mean",
             "Res&ultant", "Mi&nimum", "Ma&ximum", "&Weighted sum", "&Angle (atan2, degrees)"})
      .edited = [this] { OfferNames(); };
  AddChannels("channels", "&Channels", channels_).edited = [this] { OfferNames(); };
  fields_.push_back({.name = "Weights",
                     .caption = "Weights",
                     .target = &weights_,
                     .prompt = "Enter the factor of this channel in a weighted sum."});
  AddChoice("optTarget", "", target_, {"&New channel", "Re&place the first"});
  AddText("txtLabel", "&Label", label_).edited = [this] { labelTyped_ = true; };
  AddText("txtUnits", "Un&its", units_).edited = [this] { unitsTyped_ = true; };
  OfferNames();
  AddButtons();
}

// What nobody has typed follows the operation and the first channel.
void CombineForm::OfferNames() {
  if (!labelTyped_) {
    label_ = kNames.at(static_cast<std::size_t>(operation_));
    NoteFilled("txtLabel");
  }
  const ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (!unitsTyped_) {
    const bool angle = static_cast<Combination>(operation_) == Combination::Angle;
    units_ = angle ? "deg" : channels.empty() ? "" : workbench_.trial.ChanUnits[channels.front()].Text();
    NoteFilled("txtUnits");
  }
}

bool CombineForm::TakesAsMany(const ChannelList& channels) {
  const auto how = static_cast<Combination>(operation_);
  if ((how == Combination::Ratio || how == Combination::Angle) && channels.size() != 2) {
    ShowRefusal(workbench_, {.title = "Choose Only 2 Channels",
                             .text = "You must only choose two channels.",
                             .icon = Icon::Exclamation});
    return false;
  }
  const std::size_t least = how == Combination::Resultant ? 1 : 2;
  if (channels.size() < least) {
    RefuseTooFewChannels(workbench_, static_cast<int>(least));
    return false;
  }
  return true;
}

bool CombineForm::Compute() {
  Trial& trial = workbench_.trial;
  const ChannelList channels = SelectedChannels(trial, channels_);
  const bool replaces = target_ == 1;
  if (!TakesAsMany(channels) || (!replaces && !HasFreeChannels(workbench_, 1))) {
    return false;
  }
  const CombinedChannel made =
      CombineChannels(trial, static_cast<Combination>(operation_), channels, weights_);
  int to = channels.front();
  if (replaces) {
    trial.ChanLabel[to] = label_;
    trial.ChanUnits[to] = units_;
  } else {
    to = AppendChannels(workbench_, std::array{NewChannel{label_, units_}});
  }
  const ChannelView target = trial.Channel(to);
  for (std::int64_t i = 0; i < target.size(); ++i) {
    target[i] = made.samples[static_cast<std::size_t>(i)];
  }
  MarkChanged(workbench_, true);
  Did(workbench_,
      std::string(kNames.at(static_cast<std::size_t>(operation_))) +
          (replaces ? ", in place of the first" : ", as a new channel"),
      channels);
  if (made.zeroed > 0) {
    AddNotice(workbench_, CountOf(made.zeroed, "sample") + " of the ratio " +
                              (made.zeroed == 1 ? "was" : "were") + " set to 0 since the divisor was 0.");
  }
  return true;
}

}  // namespace velmora
