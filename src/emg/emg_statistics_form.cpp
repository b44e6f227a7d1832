#include "emg/emg_statistics_form.hpp"

#include <cmath>
#include <utility>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "emg/emg_statistics.hpp"
#include "events/thresholds.hpp"
#include "impact/integral_form.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

constexpr double kLarge = 1'000'000;
constexpr double kLong = 10'000;

// Sums grow with the length of the trial, and then decimals say less and less.
ResultTable::Format SumFormat(const NumberPatterns& patterns) {
  return [patterns](double value) {
    const double size = std::fabs(value);
    return FormatNumber(value, size >= kLarge  ? std::string_view("#.")
                               : size >= kLong ? std::string_view(patterns.TimePattern)
                                               : std::string_view(patterns.ValuePattern));
  };
}

}  // namespace

EmgStatisticsForm::EmgStatisticsForm(Workbench& workbench)
    : Form("frmEMGstats", "EMG Statistics for file: " + workbench.trial.FileName),
      workbench_(workbench),
      firstSample_(workbench.graph.StatLo > 0 ? workbench.graph.StatLo : 1),
      lastSample_(workbench.graph.StatHi > 0 ? workbench.graph.StatHi : workbench.trial.NData),
      count_(lastSample_ - firstSample_ + 1),
      startTime_(workbench.trial.Data(firstSample_, 0)),
      endTime_(workbench.trial.Data(lastSample_, 0)),
      duration_((lastSample_ - firstSample_) * workbench.TimeStep) {
  const auto shown = [](const char* name, const char* caption, FormField::Target target,
                        const char* units = "") {
    return FormField{.name = name, .caption = caption, .target = target, .units = units, .readOnly = true};
  };
  fields_ = {
      shown("StartTime", "Start time", &startTime_, "s"),
      shown("EndTime", "End time", &endTime_, "s"),
      shown("FirstSample", "First sample", &firstSample_),
      shown("LastSample", "Last sample", &lastSample_),
      shown("N", "Number of data", &count_),
      shown("Duration", "Duration", &duration_, "s"),
  };
  AddButtons();
  Compute();
}

void EmgStatisticsForm::AddButtons() {
  const auto open = [](const char* caption, auto press) {
    return FormButton{.caption = caption, .press = [press] {
                        press();
                        return false;
                      }};
  };
  buttons_ = {
      open("Ca&lculate thresholds", [this] { CalculateThresholds(); }),
      open("&Enter threshold", [this] { EnterThresholds(); }),
      open("Send results to &Clipboard", [this] { SendToClipboard(workbench_, ClipboardText()); }),
      open("&Integration stats.",
           [this] {
             ShowIntegrationStatistics(workbench_, [this] { return SampleRange{firstSample_, lastSample_}; });
           }),
      open("&Print", [this] { PrintResults(workbench_, *this); }),
      {"E&xit", FormButton::Role::Accept, [] { return true; }},
  };
}

void EmgStatisticsForm::Compute() {
  const Trial& trial = workbench_.trial;
  ThresholdMemory& thresholds = workbench_.thresholds;
  ProgressPanel panel(workbench_, ProgressPanel::Kind::Processing);
  panel.SetStatus("Computing stats");
  const PerChannel<EmgStatistics> all =
      TakeEmgStatistics(trial, {firstSample_, lastSample_}, thresholds.ChanThreshold, workbench_.TimeStep);
  ResultTable table{.name = "frmEMGstats",
                    .title = Title(),
                    .columns = {"Channel", "Label", "Mean Abs.Value", "RMS", "Zero-cross", "Peak Count",
                                "Abs. Integ'l", "Abs. Max.", "Sum", "Abs. Sum"}};
  for (int c = 1; c <= trial.NChan; ++c) {
    const EmgStatistics& of = all[c];
    thresholds.ChanMean[c] = of.mean;
    thresholds.ChanSD[c] = of.deviation;
    table.rows.push_back({ChannelNumber(c), Trim(trial.ChanLabel[c].Text()), of.meanAbsolute, of.rms,
                          static_cast<double>(of.zeroCrossings), static_cast<double>(of.peaks),
                          of.absoluteIntegral, of.largest, of.sum, of.absoluteSum});
  }
  const ResultTable::Format value = ThroughPattern(workbench_.patterns.ValuePattern);
  const ResultTable::Format count = ThroughPattern("0");
  const ResultTable::Format sum = SumFormat(workbench_.patterns);
  table.formats = {nullptr, nullptr, value, value, count, count, sum, value, sum, sum};
  KeepTable(workbench_.results.ResultTables, table);
  tables_ = {std::move(table)};
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
  const std::string& time = workbench_.patterns.TimePattern;
  return "EMG statistics for: \t" + workbench_.trial.FileName + "\nTrial:\t" + workbench_.trial.TrialTitle +
         "\nRange:\t" + std::to_string(firstSample_) + "\t" + std::to_string(lastSample_) + "\nTimes:\t" +
         FormatNumber(startTime_, time) + "\t" + FormatNumber(endTime_, time) + "\n" +
         TableText(tables_.front());
}

void ShowEmgStatistics(Workbench& workbench) {
  EmgStatisticsForm form(workbench);
  Did(workbench, "EMG statistics over samples " + std::to_string(workbench.graph.StatLo) + " to " +
                     std::to_string(workbench.graph.StatHi));
  form.Show(workbench);
}

}  // namespace velmora
