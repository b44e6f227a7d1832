#include "dsp/filters/filter_commands.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/filters/butterworth_form.hpp"
#include "dsp/filters/filter_and_tell.hpp"

namespace velmora {
namespace {

constexpr std::string_view kHighPassPrompt =
    "Zero-lag, 4th-order, high-pass, Butterworth with 10 padding points. Enter cutoff frequency (Hz) per "
    "channel (0.0 means no filtering).";
constexpr std::string_view kLowPassPrompt =
    "Zero-lag, 4th-order, low-pass, Butterworth with 10 padding points. Enter cutoff frequency (Hz) per "
    "channel (0.0 means no filtering).";
constexpr std::int32_t kMeansOfTen = -10;

bool PickCutoffs(Workbench& workbench, std::string_view prompt, const PerChannel<float>& offered,
                 const std::string& offeredOf) {
  BeginPicking(workbench, prompt);
  workbench.chooser.ChanConst = offered;
  workbench.chooser.ValuesOf = offeredOf;
  workbench.chooser.ChooserValuesMode = true;
  return ChannelPicker(workbench).Show();
}

// Asks for the cut-offs, which become the next offer, and filters the channels that got one.
void FilterDirectly(Workbench& workbench, PassType type, std::string_view prompt, PerChannel<float>& last,
                    std::string& lastOf) {
  const Trial& trial = workbench.trial;
  if (trial.NData < 1 || !PickCutoffs(workbench, prompt, last, lastOf)) {
    return;
  }
  last = workbench.chooser.ChanConst;
  workbench.filters.FilterCutoffs = last;
  lastOf = workbench.filters.CutoffsOf = workbench.LoadedFile;
  ChannelsFilter filter{.type = type, .Padding = kMeansOfTen, .Cutoffs = last};
  filter.Passes.fill(1);
  filter.ZeroLag.fill(true);
  const auto* channels = last.begin() + 1;
  if (std::any_of(channels, channels + trial.NChan, [](float cutoff) { return cutoff > 0; })) {
    MarkChanged(workbench, true);
  }
  FilterAndTell(workbench, filter);
}

void HighPass(Workbench& workbench) {
  FilterDirectly(workbench, PassType::High, kHighPassPrompt, workbench.filters.LastHighPassCutoffs,
                 workbench.filters.LastHighPassOf);
}

void LowPass(Workbench& workbench) {
  FilterDirectly(workbench, PassType::Low, kLowPassPrompt, workbench.filters.LastLowPassCutoffs,
                 workbench.filters.LastLowPassOf);
}

constexpr std::array kFilterCommands = {
    Command{"analysis.high-pass", "&High-pass Filter", "&Analysis", Needs::Data, HighPass},
    Command{"analysis.low-pass", "&Low-pass filter", "&Analysis", Needs::Data, LowPass},
};

}  // namespace

void ShowButterworth(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    ButterworthForm(workbench).Show(workbench);
  }
}

std::span<const Command> FilterCommands() {
  return kFilterCommands;
}

}  // namespace velmora
