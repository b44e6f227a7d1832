#include "impact/phases/work_form.hpp"

#include <algorithm>

#include "core/results/trial_lines.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/design/cancellable_run.hpp"

namespace velmora {

WorkForm::WorkForm(Workbench& workbench, SampleRange range)
    : PhasesForm(workbench, "frmWork", "Work or Angular Impulse Analysis", range) {
  AddChannels("channels", "&Channels", channels_);
  AddRuleFields();
  AddFlag("chkIntegral", "Add the running &integral", addIntegral_);
  AddButtons();
  viewTitle_ = "Work or angular impulse: integrals by trapezoids, split where the sign changes";
}

void WorkForm::AddIntegrals() {
  Trial& trial = workbench_.trial;
  std::vector<NewChannel> made;
  for (const ChannelWork& of : Found()) {
    made.push_back({.label = "Int. " + LabelOnOneLine(trial, of.channel), .units = of.units});
  }
  int channel = AppendChannels(workbench_, made);
  for (const ChannelWork& of : Found()) {
    const std::vector<double> running = RunningIntegral(of.signal, 1.0 / trial.Rate);
    for (std::int64_t i = Range().lo; i <= trial.NData; ++i) {
      const auto k = static_cast<std::size_t>(std::min<std::int64_t>(i, Range().hi) - Range().lo);
      trial.Data(i, channel) = static_cast<float>(running[k]);
    }
    ++channel;
  }
}

bool WorkForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  channels = WithoutMissing(workbench_, channels, Range());
  if (channels.empty() || (addIntegral_ && !HasFreeChannels(workbench_, static_cast<int>(channels.size())))) {
    return false;
  }
  ForgetFound();
  const bool done = ReadCancellable(workbench_, "Looking for phases", [&](const Turn& turn) {
    for (const int c : channels) {
      FindPhases(c);
      Give(turn);
    }
  });
  if (!done) {
    return false;
  }
  Did(workbench_,
      std::string("Phases of work or angular impulse") + (addIntegral_ ? ", running integral added" : ""),
      channels);
  if (addIntegral_) {
    AddIntegrals();
  }
  return true;
}

void AnalyseWork(Workbench& workbench) {
  AnalysePhases<WorkForm>(workbench);
}

}  // namespace velmora
