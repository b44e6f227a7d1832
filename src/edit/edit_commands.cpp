#include "edit/edit_commands.hpp"

#include <array>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "edit/experiment_form.hpp"
#include "edit/trial_edits.hpp"

namespace velmora {
namespace {

constexpr std::string_view kEditMenu = "&Edit";

void Recall(Workbench& workbench) {
  if (RecallLabels(workbench.trial)) {
    MarkChanged(workbench, true);
    return;
  }
  ShowRefusal(workbench, {.title = "No Previous Labels",
                          .text = "No other file was loaded before this one.",
                          .icon = Icon::Information});
}

template <typename Text>
void EditNames(Workbench& workbench, std::string_view prompt, PerChannel<Text>& names) {
  const PerChannel<Text> before = names;
  PickNames(workbench, prompt, names);
  if (names != before) {
    MarkChanged(workbench, true);
  }
}

void EditLabels(Workbench& workbench) {
  EditNames(workbench, "Change the labels of the channels.", workbench.trial.ChanLabel);
}

void EditUnits(Workbench& workbench) {
  EditNames(workbench, "Change the units of the channels.", workbench.trial.ChanUnits);
}

void EditTitle(Workbench& workbench) {
  std::string& title = workbench.trial.TrialTitle;
  const std::string typed = workbench.questions.AskInput(
      {.title = "Trial Title", .prompt = "Enter a brief title for this data file.", .defaultText = title});
  if (!typed.empty()) {
    title = typed;
    MarkChanged(workbench, true);
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
  CorrectRate(workbench.trial, rate);
  MarkChanged(workbench, true);
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
