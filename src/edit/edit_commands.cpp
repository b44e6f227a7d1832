#include "edit/edit_commands.hpp"

#include <array>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/event_lines.hpp"
#include "core/trial/event_times.hpp"
#include "core/trial/helpers.hpp"
#include "edit/experiment_form.hpp"
#include "edit/trial_edits.hpp"

namespace velmora {
namespace {

constexpr std::string_view kEditMenu = "&Edit";

std::vector<int> AllChannels(const Trial& trial) {
  std::vector<int> channels(static_cast<std::size_t>(trial.NChan));
  std::iota(channels.begin(), channels.end(), 1);
  return channels;
}

void Recall(Workbench& workbench) {
  if (RecallLabels(workbench.trial)) {
    MarkChanged(workbench, true);
    Did(workbench, "Labels and units of the file before recalled", AllChannels(workbench.trial));
    return;
  }
  ShowRefusal(workbench, {.title = "No Previous Labels",
                          .text = "No other file was loaded before this one.",
                          .icon = Icon::Information});
}

/// The channels whose text is now another; they have been marked as a change.
template <typename Text>
std::vector<int> EditNames(Workbench& workbench, std::string_view prompt, PerChannel<Text>& names,
                           const PerChannel<Text>& before) {
  PickNames(workbench, prompt, names);
  std::vector<int> changed = AllChannels(workbench.trial);
  std::erase_if(changed, [&](int c) { return names[c] == before[c]; });
  if (!changed.empty()) {
    MarkChanged(workbench, true);
  }
  return changed;
}

std::string Quoted(const std::string& text) {
  return "\"" + Trim(text) + "\"";
}

void EditLabels(Workbench& workbench) {
  PerChannel<Label>& labels = workbench.trial.ChanLabel;
  const PerChannel<Label> before = labels;
  for (const int c : EditNames(workbench, "Change the labels of the channels.", labels, before)) {
    Did(workbench, "Label " + Quoted(before[c].Text()) + " changed to " + Quoted(labels[c].Text()));
  }
}

void EditUnits(Workbench& workbench) {
  PerChannel<Units>& units = workbench.trial.ChanUnits;
  const PerChannel<Units> before = units;
  DidEach(workbench, EditNames(workbench, "Change the units of the channels.", units, before),
          [&units](int c) { return "Units " + Quoted(units[c].Text()); });
}

void EditTitle(Workbench& workbench) {
  std::string& title = workbench.trial.TrialTitle;
  const std::string typed = workbench.questions.AskInput(
      {.title = "Trial Title", .prompt = "Enter a brief title for this data file.", .defaultText = title});
  if (typed.empty()) {
    return;
  }
  const std::string before = std::exchange(title, typed);
  MarkChanged(workbench, true);
  if (title != before) {
    Did(workbench, "Title " + Quoted(title));
  }
}

void EditRate(Workbench& workbench) {
  if (workbench.time.Base != TimeBase::Seconds) {
    ShowRefusal(workbench, {.title = "Sampling Rate",
                            .text = "The sampling rate can only be changed while the time base is seconds.",
                            .icon = Icon::Exclamation});
    return;
  }
  const std::string typed =
      workbench.questions.AskInput({.title = "Sampling Rate",
                                    .prompt = "Enter sampling rate per channel in samples per second (Hz).",
                                    .defaultText = PlainNumber(workbench.trial.Rate),
                                    .isNumber = true});
  if (typed.empty()) {
    return;
  }
  const double rate = Val(typed);
  if (!(rate > 0 && rate <= 1e12)) {
    ShowRefusal(workbench, {.title = "Invalid Entry",
                            .text = "Invalid entry.  Sampling rate unchanged.",
                            .icon = Icon::Exclamation});
    return;
  }
  const double before = workbench.trial.Rate;
  RetimeEventLines(workbench.trial, [=](double time) { return time * before / rate; });
  CorrectRate(workbench.trial, rate);
  FollowRate(workbench, before);
  MarkChanged(workbench, true);
  Did(workbench, "Sampling rate corrected from " + PlainNumber(before) + " to " + PlainNumber(rate) + " Hz");
}

template <void (*procedure)(Workbench&)>
void WithData(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    procedure(workbench);
  }
}

constexpr std::array kEditCommands = {
    Command{"edit.recall-labels", "Recall &Previous labels && units", kEditMenu, Needs::Data,
            WithData<Recall>},
    Command{"edit.sampling-rate", "Sampling &Rate", kEditMenu, Needs::Data, WithData<EditRate>},
    Command{"edit.labels", "&Labels", kEditMenu, Needs::Data, WithData<EditLabels>},
    Command{"edit.units", "&Units", kEditMenu, Needs::Data, WithData<EditUnits>},
    Command{"edit.title", "&Title", kEditMenu, Needs::Data, WithData<EditTitle>},
    Command{"edit.experiment-information", "&Experiment Information", kEditMenu, Needs::Data,
            WithData<ShowExperimentInformation>},
};

}  // namespace

std::span<const Command> EditCommands() {
  return kEditCommands;
}

}  // namespace velmora
