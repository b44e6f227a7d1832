#include "channels/channel_commands.hpp"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "channels/combine_form.hpp"
#include "channels/waveform_form.hpp"
#include "core/trial/arrange_channels.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/math/teager_kaiser.hpp"

namespace velmora {
namespace {

bool HasData(const Workbench& workbench) {
  return workbench.trial.NData > 0 && workbench.trial.NChan > 0;
}

// The trial is as changed as it was until something is done.
ChannelList Pick(Workbench& workbench, std::string_view prompt) {
  const bool changed = workbench.trial.FileChanged;
  ChannelList channels = PickChannels(workbench, prompt);
  MarkChanged(workbench, changed);
  return channels;
}

// Channels are about to be others: a graph of them is left first, if it may be.
bool LeaveGraph(Workbench& workbench) {
  LeaveView(workbench);
  return workbench.view == nullptr;
}

bool ConfirmErasing(Workbench& workbench, const ChannelList& channels) {
  if (static_cast<int>(channels.size()) == workbench.trial.NChan) {
    ShowRefusal(workbench, {.title = "Cannot Erase All Channels",
                            .text = "At least one channel must stay.",
                            .icon = Icon::Exclamation});
    return false;
  }
  std::string text = "Press Yes to erase " + std::to_string(channels.size()) + " channel(s).";
  if (workbench.trial.ForcesReduced) {
    text += "\nThe channels of the reduced forces will no longer be known.";
  }
  return workbench.questions.AskBox({.title = "Erase Channels",
                                     .text = text,
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void Erase(Workbench& workbench) {
  if (!HasData(workbench)) {
    return;
  }
  const ChannelList channels = Pick(workbench, "Select channel(s) to erase.");
  if (channels.empty() || !ConfirmErasing(workbench, channels) || !LeaveGraph(workbench)) {
    return;
  }
  ChannelList kept;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (std::find(channels.begin(), channels.end(), c) == channels.end()) {
      kept.push_back(c);
    }
  }
  Did(workbench, "Erased", channels);  // by the labels they have
  ArrangeChannels(workbench, kept);
  workbench.chooser.ChanSelected.fill(false);
  MarkChanged(workbench, true);
}

void Copy(Workbench& workbench) {
  if (!HasData(workbench)) {
    return;
  }
  const ChannelList channels = Pick(workbench, "Select channel(s) to copy.");
  if (channels.empty() || !HasFreeChannels(workbench, static_cast<int>(channels.size()))) {
    return;
  }
  Trial& trial = workbench.trial;
  std::vector<NewChannel> copies;
  for (const int c : channels) {
    copies.push_back({trial.ChanLabel[c].Text() + " copy", trial.ChanUnits[c].Text()});
  }
  const int first = AppendChannels(workbench, copies);
  int to = first;
  for (const int c : channels) {
    trial.ChanGain[to] = trial.ChanGain[c];
    trial.ChanOffset[to] = trial.ChanOffset[c];
    ++to;
  }
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* frame = trial.matrix.Frame(i);
    float* copy = frame + first;
    for (const int c : channels) {
      *copy++ = frame[c];
    }
  }
  Did(workbench, "Copied", channels);
}

void Move(Workbench& workbench) {
  if (!HasData(workbench)) {
    return;
  }
  Trial& trial = workbench.trial;
  ChooserState& chooser = workbench.chooser;
  const bool changed = trial.FileChanged;
  const ChannelFlags selected = chooser.ChanSelected;  // a picker of values leaves them alone
  BeginPicking(workbench, "Enter the new place of each channel (0.5 puts it first).");
  chooser.ChanSelected = selected;
  for (int c = 1; c <= trial.NChan; ++c) {
    chooser.ChanConst[c] = static_cast<float>(c);
  }
  chooser.ChooserValuesMode = true;
  const bool accepted = ChannelPicker(workbench).Show();
  MarkChanged(workbench, changed);
  std::vector<int> order(static_cast<std::size_t>(trial.NChan));
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(),
                   [&chooser](int a, int b) { return chooser.ChanConst[a] < chooser.ChanConst[b]; });
  if (!accepted || std::is_sorted(order.begin(), order.end()) || !LeaveGraph(workbench)) {
    return;
  }
  ChannelList moved;
  for (std::size_t k = 0; k < order.size(); ++k) {
    if (order[k] != static_cast<int>(k) + 1) {
      moved.push_back(order[k]);
    }
  }
  std::sort(moved.begin(), moved.end());
  Did(workbench, "Moved to other places", moved);
  ArrangeChannels(workbench, order);
  MarkChanged(workbench, true);
}

void ApplyTeagerKaiser(Workbench& workbench) {
  constexpr std::int32_t kFewest = 3;
  if (!HasData(workbench)) {
    return;
  }
  const ChannelList channels = Pick(workbench, "Select channel(s) for the Teager-Kaiser energy operator.");
  if (channels.empty()) {
    return;
  }
  if (workbench.trial.NData < kFewest) {
    RefuseTooFewData(workbench);
    return;
  }
  MarkChanged(workbench, true);  // also where a sample is found that cannot be stored
  TeagerKaiser(workbench.trial, channels);
  Did(workbench, "Teager-Kaiser energy operator", channels);
}

// Another name of the smoothing menu's straight line.
void Interpolate(Workbench& workbench) {
  workbench.RunById(workbench, "smooth.interpolate");
}

void Combine(Workbench& workbench) {
  if (HasData(workbench)) {
    CombineForm(workbench).Ask();
  }
}

void Generate(Workbench& workbench) {
  if (workbench.trial.NData > 0 && !HasTimeBase(workbench)) {
    return;
  }
  WaveformForm(workbench).Show(workbench);
}

constexpr std::string_view kMenu = "&Channel";

constexpr std::array kCommands = {
    Command{"channel.erase", "&Erase channels", kMenu, Needs::Data, Erase},
    Command{"channel.copy", "&Copy channels", kMenu, Needs::Data, Copy},
    Command{"channel.move", "&Move channels", kMenu, Needs::Data, Move},
    Command{"channel.combine", "Com&bine channels", kMenu, Needs::Data, Combine},
    Command{"channel.teager-kaiser", "&Teager-Kaiser energy operator", kMenu, Needs::Data, ApplyTeagerKaiser},
    Command{"channel.interpolate", "&Interpolate between cursors", kMenu, Needs::Data, Interpolate},
    Command{"channel.generate", "&Generate a waveform", kMenu, Needs::Nothing, Generate},
};

}  // namespace

std::span<const Command> ChannelCommands() {
  return kCommands;
}

}  // namespace velmora
