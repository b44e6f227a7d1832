#include "trigger/trigger_commands.hpp"

#include <array>
#include <cmath>

#include "core/trial/helpers.hpp"
#include "trigger/trigger_form.hpp"

namespace velmora {
namespace {

const char* WhyNot(const Workbench& workbench) {
  const auto* view = dynamic_cast<const SingleView*>(workbench.view.get());
  return view == nullptr || view->TriggeringOffered
             ? nullptr
             : "The last scan found no trigger. The key 3 opens the dialogue all the same.";
}

void Open(Workbench& workbench) {
  SingleView& view = OpenSingleView(workbench);
  if (const char* why = WhyNot(workbench)) {
    workbench.report.warnings.emplace_back(why);
    return;
  }
  const double rate = workbench.trial.Rate;
  if (!(rate > 0 && std::isfinite(rate))) {
    ShowRefusal(workbench, {.title = "Invalid Sampling Rate",
                            .text = "The sampling rate must be above zero for triggering.",
                            .icon = Icon::Exclamation});
    return;
  }
  TriggerForm(workbench, view).Show(workbench);
}

constexpr std::array kTriggerCommands = {
    Command{"trigger.open", "&Triggering", "&Single-axis graph/&Cursor", Needs::View, Open, WhyNot},
};

}  // namespace

std::span<const Command> TriggerCommands() {
  return kTriggerCommands;
}

}  // namespace velmora
