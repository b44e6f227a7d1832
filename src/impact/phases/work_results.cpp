#include "impact/phases/work_results.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/results/pictures_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "impact/phases/work_units.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kPositiveColour = 6;
constexpr int kNegativeColour = 3;
constexpr double kRoomForText = 0.15;  // of the range, beside its number

ResultTable PhaseTable(const Workbench& workbench, SampleRange range, const std::vector<ChannelWork>& all) {
  const Trial& trial = workbench.trial;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  ResultTable table{
      .name = "frmWork",
      .title = "Phases",
      .columns = {"Channel", "Label", "Phase", "From", "To", "Duration", "Integral", "Peak", "Peak at",
                  "Mean"},
      .formats = {nullptr, nullptr, ThroughPattern("0"), time, time, time, value, value, time, value}};
  for (const ChannelWork& of : all) {
    double number = 0;
    for (const WorkPhase& phase : of.listed) {
      const double duration = (phase.to - phase.from) / trial.Rate;
      table.rows.push_back(
          {ChannelNumber(of.channel), LabelOnOneLine(trial, of.channel), ++number,
           TimeAt(trial, range, phase.from), TimeAt(trial, range, phase.to), duration, phase.integral,
           phase.peak, TimeAt(trial, range, static_cast<double>(phase.peakAt)), phase.integral / duration});
    }
  }
  return table;
}

ResultTable TotalsTable(const Workbench& workbench, const std::vector<ChannelWork>& all) {
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  ResultTable table{
      .name = "frmWorkTotals",
      .title = "Totals of all phases",
      .columns = {"Channel", "Label", "Positive", "Negative", "Net", "Absolute", "Phases", "Units"},
      .formats = {nullptr, nullptr, value, value, value, value, ThroughPattern("0"), nullptr}};
  for (const ChannelWork& of : all) {
    double positive = 0.0;
    double negative = 0.0;
    double net = 0.0;
    for (const WorkPhase& phase : of.phases) {
      (phase.integral > 0 ? positive : negative) += phase.integral;
      net += phase.integral;
    }
    table.rows.push_back({ChannelNumber(of.channel), LabelOnOneLine(workbench.trial, of.channel), positive,
                          negative, net, positive - negative, static_cast<double>(of.phases.size()),
                          of.units});
  }
  return table;
}

/// The number of a phase, with its integral where the band is wide enough.
std::string BandText(const Workbench& workbench, const ChannelWork& of, std::size_t k) {
  if (of.listed.size() > kMostNumberedBands) {
    return {};
  }
  const WorkPhase& phase = of.listed[k];
  const bool wide = phase.to - phase.from >= kRoomForText * static_cast<double>(of.signal.size());
  return std::to_string(k + 1) +
         (wide ? ": " + FormatNumber(phase.integral, workbench.patterns.ValuePattern) + " " + of.units : "");
}

// The curve, and a band for every phase that is listed.
FormGraph PictureOf(const Workbench& workbench, SampleRange range, const ChannelWork& of) {
  const Trial& trial = workbench.trial;
  FormGraph graph = SignalPicture(trial, of.channel);
  graph.y.caption = of.signalUnits;
  graph.plots.push_back({.name = LabelOnOneLine(trial, of.channel),
                         .colour = trial.ChanColour[of.channel],
                         .x = SamplesOf(trial, 0, range),
                         .y = of.signal,
                         .width = 2.0});
  for (std::size_t k = 0; k < of.listed.size() && k < kMostBands; ++k) {
    const WorkPhase& phase = of.listed[k];
    graph.bands.push_back({.from = TimeAt(trial, range, phase.from),
                           .to = TimeAt(trial, range, phase.to),
                           .text = BandText(workbench, of, k),
                           .colour = phase.integral > 0 ? kPositiveColour : kNegativeColour,
                           .above = true});
  }
  FitAxes(graph);
  AddRoomAbove(graph);
  graph.plots.push_back({.name = "zero", .colour = 0, .x = {graph.x.minimum, graph.x.maximum}, .y = {0, 0}});
  return graph;
}

}  // namespace

ChannelWork FindWork(const Trial& trial, int channel, SampleRange range, const WorkRule& rule) {
  const std::string units = OneLine(Trim(trial.ChanUnits[channel].Text()));
  const std::string perMass = rule.mass > 0 ? "/kg" : "";
  ChannelWork found{.channel = channel,
                    .signalUnits = units + perMass,
                    .units = UnitsOverTime(units) + perMass,
                    .signal = SamplesOf(trial, channel, range)};
  if (rule.mass > 0) {
    for (double& x : found.signal) {
      x /= rule.mass;
    }
  }
  found.phases = FindWorkPhases(found.signal, 1.0 / trial.Rate);
  std::copy_if(found.phases.begin(), found.phases.end(), std::back_inserter(found.listed),
               [&](const WorkPhase& phase) { return std::abs(phase.integral) >= rule.smallest; });
  return found;
}

void ShowWork(Workbench& workbench, Results results, const std::vector<ChannelWork>& all) {
  const SampleRange range = results.head.range.value();
  std::int64_t small = 0;
  for (const ChannelWork& of : all) {
    small += static_cast<std::int64_t>(of.phases.size() - of.listed.size());
  }
  if (small > 0) {
    results.words += (results.words.empty() ? "" : "  ") + CountOf(small, "smaller phase") +
                     (small == 1 ? " is" : " are") + " not listed.";
  }
  results.file = {.what = "Work", .extension = ".tab"};
  results.tables = {PhaseTable(workbench, range, all), TotalsTable(workbench, all)};
  PicturesForm(workbench, std::move(results), ChannelNames(workbench.trial, all), [&](std::size_t which) {
    return PictureOf(workbench, range, all[which]);
  }).Show(workbench);
}

}  // namespace velmora
