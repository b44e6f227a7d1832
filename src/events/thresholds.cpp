#include "events/thresholds.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "dsp/channel_picking.hpp"
#include "events/baseline.hpp"

namespace velmora {
namespace {

// What the picker would mark as a change is none of the samples, and the channels that a graph shows stay
// selected.
bool ShowPicker(Workbench& workbench, std::string_view prompt) {
  const ThresholdMemory& thresholds = workbench.thresholds;
  const bool changed = workbench.trial.FileChanged;
  const ChannelFlags selected = workbench.chooser.ChanSelected;
  BeginPicking(workbench, prompt);
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    workbench.chooser.ChanConst[c] = static_cast<float>(thresholds.ChanThreshold[c]);
  }
  workbench.chooser.ChooserValuesMode = true;
  workbench.chooser.ValuesOf = thresholds.ThresholdsOf;
  const bool accepted = ChannelPicker(workbench).Show();
  MarkChanged(workbench, changed);
  workbench.chooser.ChanSelected = selected;
  return accepted;
}

std::string SDs(const Workbench& workbench) {
  return PlainNumber(workbench.thresholds.SDMultiplier) + " SD above the mean";
}

void TakeOver(Workbench& workbench) {
  workbench.thresholds.ThresholdsValid = true;
  workbench.thresholds.ThresholdsOf = workbench.LoadedFile;
  if (workbench.view != nullptr) {
    workbench.view->ThresholdsChanged();
  }
}

void TellInvalid(Workbench& workbench) {
  std::string labels;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (!std::isfinite(workbench.thresholds.ChanThreshold[c])) {
      labels += (labels.empty() ? "" : ", ") + Trim(workbench.trial.ChanLabel[c].Text());
    }
  }
  if (!labels.empty()) {
    AddNotice(workbench, "No threshold could be made of this region for " + labels +
                             ": it has a single sample, or samples that are no numbers. No onset is found "
                             "there.");
  }
}

}  // namespace

std::optional<float> AskSDMultiplier(Workbench& workbench) {
  const std::string answer = workbench.questions.AskInput(
      {.title = "Threshold Magnitude",
       .prompt = "Enter magnitude of standard deviations to use as thresholds, usually 2.",
       .defaultText = PlainNumber(workbench.thresholds.SDMultiplier),
       .isNumber = true});
  if (answer.empty()) {
    return std::nullopt;
  }
  return static_cast<float>(Val(answer));
}

void MakeThresholds(Workbench& workbench) {
  ThresholdMemory& thresholds = workbench.thresholds;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    thresholds.ChanThreshold[c] = thresholds.SDMultiplier * thresholds.ChanSD[c] + thresholds.ChanMean[c];
  }
  TakeOver(workbench);
  TellInvalid(workbench);
}

void ShowThresholds(Workbench& workbench) {
  ShowPicker(workbench, "These are the calculated thresholds.");
}

bool AskThresholds(Workbench& workbench, std::string_view prompt) {
  return ShowPicker(workbench, prompt);
}

void CalculateThresholds(Workbench& workbench, SampleRange region) {
  const std::optional<float> magnitude = AskSDMultiplier(workbench);
  if (!magnitude) {
    return;
  }
  ThresholdMemory& thresholds = workbench.thresholds;
  const Baseline baseline = TakeBaseline(workbench.trial, region);
  thresholds.SDMultiplier = *magnitude;
  thresholds.ChanMean = baseline.mean;
  thresholds.ChanSD = baseline.deviation;
  thresholds.BaselineTaken = true;
  MakeThresholds(workbench);
  Did(workbench, "Thresholds " + SDs(workbench) + " of samples " + std::to_string(region.lo) + " to " +
                     std::to_string(region.hi));
  ShowThresholds(workbench);
}

void SetSDLevel(Workbench& workbench) {
  if (!workbench.thresholds.BaselineTaken) {
    return;
  }
  const std::optional<float> magnitude = AskSDMultiplier(workbench);
  if (!magnitude) {
    return;
  }
  workbench.thresholds.SDMultiplier = *magnitude;
  MakeThresholds(workbench);
  Did(workbench, "Thresholds " + SDs(workbench));
  ShowThresholds(workbench);
}

void EnterThresholds(Workbench& workbench, const PerChannel<double>& entered) {
  ThresholdMemory& thresholds = workbench.thresholds;
  ChannelList changed;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (thresholds.ChanThreshold[c] != entered[c]) {
      changed.push_back(c);
    }
    thresholds.ChanThreshold[c] = entered[c];
  }
  TakeOver(workbench);
  DidEach(workbench, changed,
          [&entered](int c) { return "Threshold " + PlainNumber(static_cast<float>(entered[c])); });
}

void EditThresholds(Workbench& workbench) {
  if (!AskThresholds(workbench, "Enter a threshold for computing EMG zero-crossings or onsets.")) {
    return;
  }
  PerChannel<double> entered{};
  std::copy(workbench.chooser.ChanConst.begin(), workbench.chooser.ChanConst.end(), entered.begin());
  EnterThresholds(workbench, entered);
}

void ReadThresholds(Workbench& workbench) {
  const std::size_t deeds = workbench.report.deeds.size();
  workbench.RunById(workbench, "file.read-units");
  if (workbench.report.deeds.size() > deeds) {
    workbench.thresholds.ThresholdsValid = true;
  }
}

void SaveThresholds(Workbench& workbench) {
  if (workbench.thresholds.ThresholdsValid) {
    workbench.RunById(workbench, "save.vmu");
  }
}

float CandidateThreshold(const Workbench& workbench, int channel, SampleRange region) {
  const Baseline baseline = TakeBaseline(workbench.trial, region);
  return workbench.thresholds.SDMultiplier * static_cast<float>(baseline.deviation[channel]) +
         static_cast<float>(baseline.mean[channel]);
}

std::string ThresholdsOfAnotherTrial(const Workbench& workbench) {
  const std::string& of = workbench.thresholds.ThresholdsOf;
  if (of == workbench.LoadedFile) {
    return {};
  }
  return "The thresholds are those of " + (of.empty() ? "another trial" : FileNamePart(of)) + ".";
}

}  // namespace velmora
