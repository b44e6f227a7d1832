#include "dsp/design/residuals_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/files/paths.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "dsp/filters/filter_messages.hpp"

namespace velmora {
namespace {

constexpr int kFewestSamples = 5;
constexpr double kLinesToSee = 8;  // the height of the picture, in residuals at the cut-off

}  // namespace

ResidualsForm::ResidualsForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmResiduals", "Cut-off by Residual Analysis"), range_(range) {
  const double rate = workbench.trial.Rate;
  const double highest = rate / 2;
  const Limits within{.lowest = 0, .highest = highest, .openBelow = true, .openAbove = true};
  from_ = rate / 200;
  to_ = 0.95 * std::pow(std::sqrt(2.0) - 1, 0.25) * highest;
  AddChannels("channels", "&Channels", channels_);
  FormField& from = AddNumber("txtFrom", "&From", from_, within);
  from.units = "Hz";
  from.pattern = "0.00##";
  FormField& to = AddNumber("txtTo", "&To", to_, within);
  to.units = "Hz";
  to.pattern = "0.00##";
  AddCount("txtSteps", "&Steps", steps_, {20, 1000});
  AddNumber("txtLinearity", "&Linearity (r squared)", linearity_, {0.5, 0.9999});
  AddNumber("txtLineFrom", "Line f&rom (0: found)", lineFrom_,
            {.lowest = 0, .highest = highest, .openAbove = true})
      .units = "Hz";
  AddFlag("chkUse", "Offer as low-pass &cut-offs", use_);
  AddButtons();
}

bool ResidualsForm::AcceptsCutoffs() {
  if (!(from_ < to_)) {
    RefuseEntry(workbench_, "To", from_, workbench_.trial.Rate / 2);
    return false;
  }
  for (const float cutoff : {cutoffs_.front(), cutoffs_.back()}) {
    const FilterVerdict verdict = VerdictOfResidualFilter(cutoff, workbench_.trial.Rate);
    if (!verdict.Accepted()) {
      ShowRefusal(workbench_,
                  {.title = "Invalid Filter", .text = ReasonText(verdict), .icon = Icon::Exclamation});
      return false;
    }
  }
  return true;
}

bool ResidualsForm::Compute() {
  cutoffs_ = ResidualCutoffs(from_, to_, steps_);
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (range_.hi - range_.lo + 1 < kFewestSamples) {
    RefuseTooFewData(workbench_);
    return false;
  }
  if (!AcceptsCutoffs()) {
    return false;
  }
  channels = WithoutMissing(workbench_, channels, {1, workbench_.trial.NData});
  if (channels.empty()) {
    return false;
  }
  std::vector<Found> all;
  const bool done = ReadCancellable(workbench_, "Residual analysis", [&](const Turn& turn) {
    for (const int c : channels) {
      Found found{.channel = c};
      found.curve = ResidualCurve(workbench_.trial, c, range_, cutoffs_, MachineSimdLevel(), turn);
      found.line = FindResidualLine(cutoffs_, found.curve, linearity_, lineFrom_);
      all.push_back(std::move(found));
    }
  });
  if (!done) {
    return false;
  }
  Did(workbench_, "Residual analysis of " + CountOf(static_cast<std::int64_t>(cutoffs_.size()), "cut-off"),
      channels);
  TellUnfound(all);
  OfferCutoffs(all);
  results_ = ResultsOf(all);
  return true;
}

void ResidualsForm::TellUnfound(const std::vector<Found>& all) {
  for (const Found& found : all) {
    if (found.Cutoff()) {
      continue;
    }
    const std::string none = "No cut-off was found for channel " + ChannelNumber(found.channel) + ": ";
    if (!found.line) {
      ShowRefusal(workbench_,
                  {.title = "No Straight Part",
                   .text = none + "the residuals have no straight part.  Set where the line starts.",
                   .icon = Icon::Exclamation});
      continue;
    }
    const bool beginsBelow = found.curve.front() <= found.line->atZero;
    ShowRefusal(workbench_,
                {.title = "Line Not Reached",
                 .text = none + (beginsBelow ? "the residuals lie below their straight part from the first "
                                               "frequency on.  Begin at a lower one."
                                             : "the residuals never come down to where their straight part "
                                               "meets 0 Hz.  Let the line start elsewhere."),
                 .icon = Icon::Exclamation});
  }
}

void ResidualsForm::OfferCutoffs(const std::vector<Found>& all) {
  if (!use_) {
    return;
  }
  for (const Found& found : all) {
    if (const std::optional<double> cutoff = found.Cutoff()) {
      workbench_.filters.LastLowPassCutoffs[found.channel] = static_cast<float>(*cutoff);
      workbench_.filters.LastLowPassOf = workbench_.LoadedFile;
    }
  }
}

Results ResidualsForm::ResultsOf(const std::vector<Found>& all) const {
  return {.name = "frmResiduals",
          .title = "Cut-off by residual analysis (zero-lag second-order Butterworth low-pass)",
          .file = {.what = "Residual Analysis", .extension = ".tab"},
          .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
          .tables = {CutoffTable(all), CurveTable(all)},
          .graph = Graph(all)};
}

ResultTable ResidualsForm::CutoffTable(const std::vector<Found>& all) const {
  const Trial& trial = workbench_.trial;
  const ResultTable::Format value = ThroughPattern(workbench_.patterns.ValuePattern);
  const ResultTable::Format frequency = ThroughPattern("0.00");
  ResultTable table{.name = "frmResiduals",
                    .title = "Cut-offs",
                    .columns = {"Channel", "Label", "Cut-off (Hz)", "Residual", "Slope", "Line from (Hz)",
                                "Cut-off / Rate"},
                    .formats = {nullptr, nullptr, frequency, value, nullptr, frequency, value}};
  for (const Found& found : all) {
    std::vector<ResultTable::Cell> row = {ChannelNumber(found.channel), LabelOnOneLine(trial, found.channel)};
    if (const std::optional<double> cutoff = found.Cutoff()) {
      const ResidualLine& line = *found.line;
      row.insert(row.end(),
                 {*cutoff, line.atZero, line.slope, double{cutoffs_[line.first]}, *cutoff / trial.Rate});
    } else {
      row.insert(row.end(), 5, std::monostate());
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

ResultTable ResidualsForm::CurveTable(const std::vector<Found>& all) const {
  ResultTable table{.name = "frmResidualCurve",
                    .title = "Root mean square of what the filter takes away",
                    .columns = {"Frequency (Hz)"},
                    .formats = {ThroughPattern("0.00")}};
  for (const Found& found : all) {
    table.columns.push_back(ChannelNumber(found.channel) + " " +
                            LabelOnOneLine(workbench_.trial, found.channel));
    table.formats.push_back(ThroughPattern(workbench_.patterns.ValuePattern));
  }
  for (std::size_t j = 0; j < cutoffs_.size(); ++j) {
    std::vector<ResultTable::Cell> row = {double{cutoffs_[j]}};
    for (const Found& found : all) {
      row.emplace_back(found.curve[j]);
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

// The curve, its line on to 0 Hz, and from there level to where the curve comes down to it. A curve that
// begins far above its line runs out of the picture: what is read is where it meets the line. A line that is
// not reached is drawn for what it is.
FormGraph ResidualsForm::Graph(const std::vector<Found>& all) const {
  const Trial& trial = workbench_.trial;
  FormGraph graph{.title = "Residuals, " + FileNamePart(trial.FileName),
                  .x = {.minimum = 0, .maximum = cutoffs_.back(), .caption = "Cut-off frequency (Hz)"},
                  .y = {.minimum = 0, .maximum = 0, .caption = "Residual"},
                  .background = FormGraph::Background::White};
  for (const Found& found : all) {
    const int colour = trial.ChanColour[found.channel];
    FormGraph::Plot curve{.name = LabelOnOneLine(trial, found.channel), .colour = colour, .width = 2.0};
    for (std::size_t j = 0; j < cutoffs_.size(); ++j) {
      curve.x.push_back(cutoffs_[j]);
      curve.y.push_back(found.curve[j]);
    }
    const double highest = *std::max_element(curve.y.begin(), curve.y.end()) * 1.05;
    graph.y.maximum = std::max(
        graph.y.maximum, found.Cutoff() ? std::min(highest, kLinesToSee * found.line->atZero) : highest);
    graph.plots.push_back(std::move(curve));
    if (const auto& line = found.line) {
      graph.plots.push_back(
          {.name = "line of " + LabelOnOneLine(trial, found.channel),
           .colour = 0,
           .x = {line->cutoff.value_or(0), 0, double{cutoffs_.back()}},
           .y = {line->atZero, line->atZero, line->atZero + line->slope * cutoffs_.back()}});
    }
    if (const std::optional<double> cutoff = found.Cutoff()) {
      graph.marks.push_back(
          {.x = *cutoff, .text = FormatNumber(*cutoff, "0.00") + " Hz", .colour = colour, .strength = 0.7});
    }
  }
  if (!(graph.y.maximum > 0)) {
    graph.y.maximum = 1;
  }
  return graph;
}

void FindCutoffsByResiduals(Workbench& workbench) {
  if (workbench.trial.NData > 0 && HasTimeBase(workbench)) {
    const SampleRange range = AskCursorRange(workbench);
    ResidualsForm form(workbench, range);
    if (form.Ask()) {
      ShowResults(workbench, form.TakeResults());
    }
  }
}

}  // namespace velmora
