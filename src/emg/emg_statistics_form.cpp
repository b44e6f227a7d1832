#include "emg/emg_statistics_form.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "emg/emg_statistics.hpp"
#include "events/thresholds.hpp"

namespace velmora {
namespace {

SampleRange StatisticsRange(const Workbench& workbench) {
  const GraphMemory& graph = workbench.graph;
  return {graph.StatLo > 0 ? graph.StatLo : 1, graph.StatHi > 0 ? graph.StatHi : workbench.trial.NData};
}

// Zero crossings and peaks are counted by thresholds that outlive their trial.
void TellThresholdsOfAnotherTrial(Workbench& workbench) {
  const auto& thresholds = workbench.thresholds.ChanThreshold;
  const bool any = std::any_of(thresholds.begin() + 1, thresholds.begin() + 1 + workbench.trial.NChan,
                               [](double threshold) { return threshold != 0; });
  const std::string of = ThresholdsOfAnotherTrial(workbench);
  if (any && !of.empty()) {
    AddNotice(workbench, "Zero crossings and peaks: " + of);
  }
}

}  // namespace

EmgStatisticsForm::EmgStatisticsForm(Workbench& workbench)
    : StatisticsForm(workbench, Kind::Emg, "frmEMGstats",
                     "EMG Statistics for file: " + workbench.trial.FileName, StatisticsRange(workbench),
                     Times::Numbers) {
  AddRangeFields();
  buttons_ = {StayButton("Ca&lculate thresholds", [this] { CalculateThresholds(); }),
              StayButton("&Enter threshold", [this] { EnterThresholds(); })};
  AddCommonButtons("Sa&ve", "Send results to &Clipboard");
  Compute();
}

void EmgStatisticsForm::Compute() {
  const Trial& trial = workbench_.trial;
  ThresholdMemory& thresholds = workbench_.thresholds;
  ProgressPanel panel(workbench_, ProgressPanel::Kind::Processing);
  panel.SetStatus("Computing stats");
  const PerChannel<EmgStatistics> all =
      TakeEmgStatistics(trial, Range(), thresholds.ChanThreshold, workbench_.TimeStep);
  ResultTable table{.name = "frmEMGstats",
                    .title = Title(),
                    .columns = {"Channel", "Label", "Mean Abs.Value", "RMS", "Zero-cross", "Peak Count",
                                "Abs. Integ'l", "Abs. Max.", "Sum", "Abs. Sum"}};
  for (int c = 1; c <= trial.NChan; ++c) {
    const EmgStatistics& of = all[c];
    thresholds.ChanMean[c] = of.mean;
    thresholds.ChanSD[c] = of.deviation;
    // With a sample that is no number the others neither count as crossings and peaks nor have a largest.
    const auto counted = [missing = !std::isfinite(of.absoluteSum)](double value) {
      return missing ? std::numeric_limits<double>::quiet_NaN() : value;
    };
    table.rows.push_back({ChannelNumber(c), Trim(trial.ChanLabel[c].Text()), of.meanAbsolute, of.rms,
                          counted(of.zeroCrossings), counted(of.peaks), of.absoluteIntegral,
                          counted(of.largest), of.sum, of.absoluteSum});
  }
  const ResultTable::Format value = ThroughPattern(workbench_.patterns.ValuePattern);
  const ResultTable::Format count = ThroughPattern("0");
  const ResultTable::Format sum = SumFormat(workbench_.patterns);
  table.formats = {nullptr, nullptr, value, value, count, count, sum, value, sum, sum};
  SetTables({std::move(table)});
}

// A multiplier below 0 or of 0 makes no sense where thresholds bound magnitudes.
void EmgStatisticsForm::CalculateThresholds() {
  const std::optional<float> magnitude = AskSDMultiplier(workbench_);
  if (!magnitude) {
    return;
  }
  workbench_.thresholds.SDMultiplier = *magnitude == 0.0F ? 1.0F : std::fabs(*magnitude);
  MakeThresholds(workbench_);
  ShowThresholds(workbench_);
  Compute();
}

void EmgStatisticsForm::EnterThresholds() {
  if (!AskThresholds(workbench_, "Enter a threshold for computing zero-crossings, peak counts, or onsets.")) {
    return;
  }
  PerChannel<double> entered{};
  for (int c = 1; c <= workbench_.trial.NChan; ++c) {
    entered[c] = std::fabs(workbench_.chooser.ChanConst[c]);
  }
  velmora::EnterThresholds(workbench_, entered);
  Compute();
}

std::string EmgStatisticsForm::ClipboardText() const {
  return "EMG statistics for: \t" + workbench_.trial.FileName + "\nTrial:\t" + workbench_.trial.TrialTitle +
         "\nRange:\t" + std::to_string(Range().lo) + "\t" + std::to_string(Range().hi) + "\nTimes:\t" +
         StartText() + "\t" + EndText() + "\n" + TableText(tables_.front());
}

void ShowEmgStatistics(Workbench& workbench) {
  EmgStatisticsForm form(workbench);
  TellThresholdsOfAnotherTrial(workbench);
  Did(workbench, "EMG statistics over samples " + std::to_string(workbench.graph.StatLo) + " to " +
                     std::to_string(workbench.graph.StatHi));
  form.Show(workbench);
}

}  // namespace velmora
