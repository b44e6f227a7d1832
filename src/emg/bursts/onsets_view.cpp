#include "emg/bursts/onsets_view.hpp"

#include <algorithm>
#include <utility>

#include "core/results/pictures_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kBurstEnvelopeColour = 3;
constexpr int kSignalColour = 9;

TimeSpan TimeSpanOf(const Trial& trial, SampleRange range, const SignalBurst& burst) {
  return {TimeAt(trial, range, static_cast<double>(burst.on)),
          TimeAt(trial, range, static_cast<double>(burst.off))};
}

ResultTable BurstTable(const Workbench& workbench, SampleRange range,
                       const std::vector<ChannelBursts>& found) {
  const Trial& trial = workbench.trial;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  ResultTable table{
      .name = "frmOnsets",
      .title = "Bursts (mean, peak and integral of the envelope)",
      .columns = {"Channel", "Label", "Burst", "On", "Off", "Duration", "Mean", "Peak", "Integral",
                  "Threshold"},
      .formats = {nullptr, nullptr, ThroughPattern("0"), time, time, time, value, value, value, value}};
  for (const ChannelBursts& of : found) {
    for (std::size_t b = 0; b < of.bursts.size(); ++b) {
      const SignalBurst& burst = of.bursts[b];
      double sum = 0.0;
      double peak = of.envelope[static_cast<std::size_t>(burst.on)];
      for (std::int64_t i = burst.on; i <= burst.off; ++i) {
        sum += of.envelope[static_cast<std::size_t>(i)];
        peak = std::max(peak, of.envelope[static_cast<std::size_t>(i)]);
      }
      const TimeSpan active = TimeSpanOf(trial, range, burst);
      table.rows.push_back({ChannelNumber(of.channel), LabelOnOneLine(trial, of.channel),
                            static_cast<double>(b + 1), active.from, active.to,
                            static_cast<double>(burst.off - burst.on) / trial.Rate,
                            sum / static_cast<double>(burst.off - burst.on + 1), peak,
                            sum * (1.0 / trial.Rate), of.threshold});
    }
  }
  return table;
}

ResultTable SummaryTable(const Workbench& workbench, const std::vector<ChannelBursts>& found) {
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  ResultTable table{.name = "frmOnsetsSummary",
                    .title = "Summary",
                    .columns = {"Channel", "Label", "Bursts", "Active (%)", "Baseline mean", "Baseline SD"},
                    .formats = {nullptr, nullptr, ThroughPattern("0"), ThroughPattern("0.0"), value, value}};
  for (const ChannelBursts& of : found) {
    std::int64_t active = 0;
    for (const SignalBurst& burst : of.bursts) {
      active += burst.off - burst.on + 1;
    }
    std::vector<ResultTable::Cell> row = {
        ChannelNumber(of.channel), LabelOnOneLine(workbench.trial, of.channel),
        static_cast<double>(of.bursts.size()),
        100.0 * static_cast<double>(active) / static_cast<double>(of.envelope.size())};
    if (of.rest) {
      row.insert(row.end(), {of.rest->mean, of.rest->deviation});
    } else {
      row.insert(row.end(), 2, std::monostate());
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

// The EMG, over it the envelope that was searched, its threshold, and a band a burst.
FormGraph PictureOf(const Trial& trial, SampleRange range, const ChannelBursts& of) {
  FormGraph graph = SignalPicture(trial, of.channel);
  const std::vector<double> times = SamplesOf(trial, 0, range);
  FormGraph::Plot signal{
      .name = "EMG", .colour = kSignalColour, .x = times, .y = SamplesOf(trial, of.channel, range)};
  std::vector<TimeSpan> active;
  for (const SignalBurst& burst : of.bursts) {
    active.push_back(TimeSpanOf(trial, range, burst));
  }
  AddBands(graph, active, kBurstEnvelopeColour);
  graph.plots = {
      std::move(signal),
      {.name = "envelope", .colour = kBurstEnvelopeColour, .x = times, .y = of.envelope, .width = 2.0},
      LevelLine("threshold", 0, times, of.threshold)};
  FitAxes(graph);
  return graph;
}

}  // namespace

void ShowOnsets(Workbench& workbench, const OnsetsForm& form) {
  const std::vector<ChannelBursts>& found = form.Found();
  PicturesForm(workbench,
               {.name = "frmOnsets",
                .title = "Onsets and offsets",
                .file = {.what = "Onsets", .extension = ".tab"},
                .head = {.range = form.Range(), .parameters = ParametersOf(workbench.trial, form)},
                .tables = {BurstTable(workbench, form.Range(), found), SummaryTable(workbench, found)}},
               ChannelNames(workbench.trial, found),
               [&](std::size_t which) { return PictureOf(workbench.trial, form.Range(), found[which]); })
      .Show(workbench);
}

}  // namespace velmora
