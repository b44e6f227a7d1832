#include "emg/bursts/co_contraction_form.hpp"

#include <array>

#include "core/questions/result_table.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {

CoContractionForm::CoContractionForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmCoContraction", "Co-contraction"), range_(range) {
  AddChannel("comAgonist", "&Agonist", agonist_);
  AddChannel("comAntagonist", "A&ntagonist", antagonist_);
  AddFlag("chkCurve", "Add the co-contraction as a &channel", curve_);
  AddButtons();
}

std::string CoContractionForm::LabelOf(int channel) const {
  return OneLine(Trim(workbench_.trial.ChanLabel[channel].Text()));
}

std::string CoContractionForm::UnitsOf(int channel) const {
  return OneLine(Trim(workbench_.trial.ChanUnits[channel].Text()));
}

bool CoContractionForm::MayCompute() {
  if (agonist_ < 1 || antagonist_ < 1 || agonist_ == antagonist_) {
    RefuseTooFewChannels(workbench_, 2);
    return false;
  }
  for (const int c : {agonist_, antagonist_}) {
    if (RefuseMissing(workbench_, c, range_)) {
      return false;
    }
  }
  return !curve_ || HasFreeChannels(workbench_, 1);
}

// The indices add the two up.
void CoContractionForm::WarnOfUnits() {
  if (UnitsOf(agonist_) != UnitsOf(antagonist_)) {
    ShowRefusal(workbench_, {.title = "Units Differ",
                             .text = "The channels are in \"" + UnitsOf(agonist_) + "\" and \"" +
                                     UnitsOf(antagonist_) + "\".  The indices compare like with like alone.",
                             .icon = Icon::Exclamation});
  }
}

// Over the whole trial.
void CoContractionForm::AddCurve() {
  Trial& trial = workbench_.trial;
  const std::array made = {NewChannel{.label = "Co-contraction", .units = UnitsOf(agonist_)}};
  const int channel = AppendChannels(workbench_, made);
  for (std::int32_t i = 1; i <= trial.NData; ++i) {
    trial.Data(i, channel) =
        static_cast<float>(RudolphTerm(trial.Data(i, agonist_), trial.Data(i, antagonist_)));
  }
}

ResultTable CoContractionForm::Table(const CoContraction& found) const {
  const std::string units = UnitsOf(agonist_);
  return {.name = "frmCoContraction",
          .title = LabelOf(agonist_) + " against " + LabelOf(antagonist_),
          .columns = {"Index", "Value", "Units"},
          .rows = {{"Falconer and Winter 1985", CellOf(found.falconerWinter), "%"},
                   {"Rudolph 2000", found.rudolph, units},
                   {"Unnithan 1996", found.unnithan, units + ".s"},
                   {"Mean of " + LabelOf(agonist_), found.meanAgonist, units},
                   {"Mean of " + LabelOf(antagonist_), found.meanAntagonist, UnitsOf(antagonist_)}},
          .formats = {nullptr, ThroughPattern(workbench_.patterns.ValuePattern), nullptr}};
}

bool CoContractionForm::Compute() {
  if (!MayCompute()) {
    return false;
  }
  WarnOfUnits();
  const CoContraction found = CoContractionOf(workbench_.trial, agonist_, antagonist_, range_);
  results_ = {.name = "frmCoContraction",
              .title = "Co-contraction",
              .file = {.what = "Co-contraction", .extension = ".tab"},
              .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
              .tables = {Table(found)}};
  if (found.negative > 0) {
    results_.words =
        CountOf(found.negative, "sample") + " below 0 counted as 0: the channels are to be envelopes.";
    ShowRefusal(workbench_, {.title = "Not an Envelope", .text = results_.words, .icon = Icon::Exclamation});
  }
  Did(workbench_, "Co-contraction" + std::string(curve_ ? ", added as a channel" : ""),
      std::array{agonist_, antagonist_});
  if (curve_) {
    AddCurve();
  }
  return true;
}

void FindCoContraction(Workbench& workbench) {
  if (const auto range = AskTimedRange(workbench)) {
    CoContractionForm form(workbench, *range);
    if (form.Ask()) {
      ShowResults(workbench, form.TakeResults());
    }
  }
}

}  // namespace velmora
