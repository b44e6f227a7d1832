#include "emg/apdf_form.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "emg/amplitude_distribution.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kDefaultBins = 100;
constexpr int kBarsColour = 1;
constexpr int kCurveColour = 2;
constexpr int kMarkColour = 3;
constexpr int kLimitsColour = 9;  // the grey one

// As fields of a file stand: right-aligned in ten columns, a longer one cut.
std::string TenWide(double value, std::string_view pattern) {
  return Left(PadLeft(FormatNumber(value, pattern), 10), 10);
}

// What the loads below which the muscle stays for 10, 50 and 90 % of the time (static, median, peak) should
// not and must not exceed in an hour of work and more, in percent of a maximal contraction: Jonsson 1982,
// J. Human Ergol. 11, 73. Two lines in one.
FormGraph::Plot LoadLimits() {
  constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
  return {.name = "Should not, must not exceed (Jonsson)",
          .colour = kLimitsColour,
          .x = {2, 10, 50, kGap, 5, 14, 70},
          .y = {10, 50, 90, kGap, 10, 50, 90},
          .width = 2.0};
}

}  // namespace

bool ComputeApdf(Workbench& workbench, int channel) {
  EmgMemory& emg = workbench.emg;
  if (emg.EpochCount < 1) {
    emg.EpochCount = kDefaultBins;
  }
  emg.distribution = {};
  auto made = ComputeAmplitudeDistribution(workbench.trial, channel, emg.EpochCount);
  if (!made) {
    ShowRefusal(workbench, {.title = "Invalid APDF",
                            .text = "Invalid data.  APDF could not be computed.",
                            .icon = Icon::Exclamation});
    return false;
  }
  emg.distribution = *std::move(made);
  workbench.results.ResultText =
      DistributionText(workbench.trial, channel, emg.distribution, workbench.patterns.TimePattern);
  return true;
}

ApdfForm::ApdfForm(Workbench& workbench, int channel, ChannelList chosen)
    : ResultForm(
          workbench, "frmAPDF",
          "Cumulative / Amplitude Probabilty Distribution Functions for file: " + workbench.trial.FileName),
      channel_(channel),
      chosen_(std::move(chosen)),
      bins_(workbench.emg.EpochCount),
      largestBin_(bins_) {
  AddFields();
  AddButtons();
  ShowTables(false);
  Fill();
}

void ApdfForm::AddFields() {
  fields_ = {
      {.name = "EpochCount",
       .caption = "Number of &bins",
       .target = &bins_,
       .highest = std::numeric_limits<std::int16_t>::max(),
       .edited = [this] { TakeBins(); }},
      {.name = "txtMax", .caption = "Largest bin shown", .target = &largestBin_, .readOnly = true},
      {.name = "chkLimits", .caption = "&Limits of load", .target = &limits_, .edited = [this] { Fill(); }},
      {.name = "chkAll", .caption = "&All chosen channels", .target = &all_, .edited = [this] { Fill(); }},
  };
  fields_.back().hidden = chosen_.size() < 2;
}

void ApdfForm::AddButtons() {
  buttons_ = {
      StayButton("&Max.", [this] { AskMaximum(); }),
      StayButton("&Table", [this] { ShowTables(true); }),
      StayButton("&Graph", [this] { ShowTables(false); }),
      StayButton("&Stats",
                 [this] {
                   workbench_.questions.AskBox({.title = "C/APDF statistics",
                                                .text = workbench_.results.ResultText,
                                                .icon = Icon::Information});
                 }),
      StayButton("Sa&ve", [this] { Save(); }),
      ClipboardButton("Table to &Clipboard"),
  };
  for (auto& more :
       {ProgramButtons(workbench_, [this] { return Save(); }), PictureButtons(workbench_, *this)}) {
    buttons_.insert(buttons_.end(), more.begin(), more.end());
  }
  buttons_.push_back(ExitButton("E&xit"));
}

void ApdfForm::TakeBins() {
  workbench_.emg.EpochCount = static_cast<std::int16_t>(bins_);
  ComputeApdf(workbench_, channel_);
  bins_ = largestBin_ = workbench_.emg.EpochCount;
  Fill();
}

void ApdfForm::Fill() {
  SetTables({Table()});
  DrawGraph();
  ShowTables(TablesShown());
}

ResultTable ApdfForm::Table() const {
  const AmplitudeDistribution& of = workbench_.emg.distribution;
  ResultTable table{
      .name = "frmAPDF",
      .title = ChannelNumber(channel_) + " " + Trim(workbench_.trial.ChanLabel[channel_].Text()),
      .columns = {"Bin", "Amplitude", "Frequency", "APDF", "Cum.APDF"}};
  for (std::size_t b = 1; b < of.Apdf.size(); ++b) {
    const auto bin = static_cast<double>(b);
    table.rows.push_back({bin, bin * of.ApdfBinPercent, of.ApdfCounts[b], of.Apdf[b], of.Capdf[b]});
  }
  const ResultTable::Format value = ThroughPattern(workbench_.patterns.ValuePattern);
  table.formats = {ThroughPattern("0"), value, ThroughPattern("0"), value, value};
  return table;
}

void ApdfForm::DrawGraph() {
  const AmplitudeDistribution& of = workbench_.emg.distribution;
  FormGraph graph{.title = ChannelNumber(channel_) + " " + Trim(workbench_.trial.ChanLabel[channel_].Text()) +
                           ", " + workbench_.trial.FileName,
                  .x = {.maximum = largestBin_ * (100.0 / bins_), .caption = "Amplitude (% max.)"},
                  .y = {.maximum = 100, .caption = "Frequency (%)"}};
  FormGraph::Plot bars{.name = "APDF", .colour = kBarsColour, .shape = FormGraph::Shape::Bars};
  FormGraph::Plot curve{.name = "CAPDF", .colour = kCurveColour};
  for (std::size_t b = 1; b < of.Apdf.size(); ++b) {
    bars.x.push_back(static_cast<double>(b) * of.ApdfBinPercent);
    bars.y.push_back(of.Apdf[b]);
    curve.y.push_back(of.Capdf[b]);
  }
  curve.x = bars.x;
  graph.plots = {std::move(bars), std::move(curve)};
  if (all_) {
    AddOtherChannels(graph);
  }
  if (limits_) {
    graph.plots.push_back(LoadLimits());
  }
  if (!of.Apdf.empty()) {
    const auto mark = [&](const char* level, double amplitude) {
      graph.marks.push_back({amplitude, level + FormatNumber(amplitude, " 0.0"), kMarkColour});
    };
    mark("10 %", of.Apdf10);
    mark("50 %", of.Apdf50);
    mark("90 %", of.Apdf90);
  }
  graph_ = std::move(graph);
}

// The running sum alone of each, in its own colour.
void ApdfForm::AddOtherChannels(FormGraph& graph) const {
  Trial& trial = workbench_.trial;
  graph.plots.back().name += " " + ChannelNumber(channel_) + " " + Trim(trial.ChanLabel[channel_].Text());
  graph.plots.back().colour = trial.ChanColour[channel_];
  for (const int c : chosen_) {
    const auto of = c == channel_ ? std::nullopt
                                  : ComputeAmplitudeDistribution(trial, c, static_cast<std::int16_t>(bins_));
    if (!of) {
      continue;
    }
    FormGraph::Plot curve{.name = "CAPDF " + ChannelNumber(c) + " " + Trim(trial.ChanLabel[c].Text()),
                          .colour = trial.ChanColour[c]};
    for (std::size_t b = 1; b < of->Capdf.size(); ++b) {
      curve.x.push_back(static_cast<double>(b) * of->ApdfBinPercent);
      curve.y.push_back(of->Capdf[b]);
    }
    graph.plots.push_back(std::move(curve));
  }
}

void ApdfForm::AskMaximum() {
  const std::string answer = workbench_.questions.AskInput(
      {.title = "Maximum Number of Bins",
       .prompt = "Enter maximum number of bins for abscissa.  Must be less than or equal to " +
                 std::to_string(bins_) + ".",
       .defaultText = std::to_string(largestBin_),
       .isNumber = true});
  const double typed = Val(answer);
  if (typed >= 1 && typed <= bins_) {
    largestBin_ = RoundHalfEven32(typed);
    DrawGraph();
    ShowTables(TablesShown());
  }
}

std::string ApdfForm::ClipboardText() const {
  return "C/APDF for: \t" + workbench_.trial.TrialTitle + "\n" + TableText(tables_.front());
}

std::string ApdfForm::FileText() const {
  const Trial& trial = workbench_.trial;
  const AmplitudeDistribution& of = workbench_.emg.distribution;
  std::string text = TrialLines(workbench_);
  const auto line = [&text](const std::string& content) { text += content + "\n"; };
  line("");
  text += ChannelLine(trial, channel_);
  line("Maximum amplitude=\t" + std::to_string(largestBin_));
  line("Bin size=\t1");
  line("Number of samples=\t" + std::to_string(trial.NData));
  line("10th percentile amplitude=\t" + TenWide(of.Apdf10, "0.0000"));
  line("50th percentile amplitude=\t" + TenWide(of.Apdf50, "0.0000"));
  line("90th percentile amplitude=\t" + TenWide(of.Apdf90, "0.0000"));
  line("");
  line("Bin num.\tAmplitude\tFrequency\tAPDF\tCAPDF");
  for (std::size_t b = 1; b < of.Apdf.size(); ++b) {
    const auto bin = static_cast<double>(b);
    line(FormatNumber(bin, "000") + "\t" + TenWide(bin, "0.0000") + "\t" +
         TenWide(of.ApdfCounts[b], "0.000") + "\t" + TenWide(of.Apdf[b], "0.0000") + "\t" +
         TenWide(of.Capdf[b], "0.0000"));
  }
  return text;
}

std::string ApdfForm::Save() {
  return SaveResults(workbench_,
                     {.title = "Save as .APD file",
                      .defaultName = workbench_.trial.TrialName + ".apd",
                      .extension = ".apd",
                      .filter = "Velmora2 C/APDF (.apd)|*.apd|Text file (.txt)|*.txt|All files (*.*)|*.*"},
                     [this] { return FileText(); });
}

}  // namespace velmora
