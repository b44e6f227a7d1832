#include "impact/phases/phases_form.hpp"

#include <utility>

#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {

PhasesForm::PhasesForm(Workbench& workbench, std::string name, std::string title, SampleRange range)
    : AnalysisForm(workbench, std::move(name), std::move(title)), range_(range) {}

void PhasesForm::AddRuleFields() {
  constexpr double kLargest = 999'999'999;
  constexpr double kHeaviest = 1000;
  AddNumber("txtSmallest", "&Smallest reportable integral", rule_.smallest, {0, kLargest});
  AddNumber("txtMass", "Per &kilogram (kg, 0 = no)", rule_.mass, {0, kHeaviest});
}

void PhasesForm::FindPhases(int channel) {
  all_.push_back(FindWork(workbench_.trial, channel, range_, rule_));
}

void PhasesForm::ShowFound() {
  ShowWork(workbench_,
           {.name = Name(),
            .title = viewTitle_,
            .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
            .words = viewWords_},
           all_);
}

std::optional<SampleRange> AskRangeToIntegrate(Workbench& workbench) {
  if (!EnoughToIntegrate(workbench, workbench.trial.NData) || !HasTimeBase(workbench)) {
    return std::nullopt;
  }
  const SampleRange range = AskCursorRange(workbench);
  if (!EnoughToIntegrate(workbench, std::int64_t{range.hi} - range.lo + 1)) {
    return std::nullopt;
  }
  return range;
}

}  // namespace velmora
