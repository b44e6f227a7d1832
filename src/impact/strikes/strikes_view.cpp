#include "impact/strikes/strikes_view.hpp"

#include <limits>
#include <utility>

#include "core/results/pictures_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kSignalColour = 9;
constexpr int kImpactColour = 3;
constexpr int kRiseColour = 2;
// Values that do not run into each other.
constexpr std::size_t kMostValues = 12;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

using Cell = ResultTable::Cell;

ResultTable StrikeTable(const Workbench& workbench, const StrikesForm& form) {
  const Trial& trial = workbench.trial;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  const double weight = form.BodyWeight();
  ResultTable table{
      .name = "frmImpact",
      .title = form.Words(),
      .columns = {"Channel", "Label", "Impact", "Onset", "Peak", "Peak at", "Time to peak", "Avg. rate",
                  "Max. rate", "Impulse", "Duration", "Mean", "Whole", "Threshold"},
      .formats = {nullptr, nullptr, ThroughPattern("0"), time, value, time, time, value, value, value, time,
                  value, nullptr, value}};
  if (weight > 0) {
    table.columns.insert(table.columns.end(), {"Peak (BW)", "Avg. rate (BW/s)"});
    table.formats.insert(table.formats.end(), 2, value);
  }
  const double step = 1.0 / trial.Rate;
  const auto timeAt = [&](std::int64_t i) { return TimeAt(trial, form.Range(), static_cast<double>(i)); };
  for (const ChannelStrikes& of : form.Found()) {
    double number = 0;
    for (const Strike& strike : of.strikes) {
      const Contact& contact = strike.contact;
      std::vector<Cell> row = {ChannelNumber(of.channel),
                               LabelOnOneLine(trial, of.channel),
                               ++number,
                               timeAt(contact.first),
                               strike.peakValue,
                               timeAt(strike.peak),
                               static_cast<double>(strike.peak - contact.first) * step,
                               CellOf(strike.averageRate),
                               CellOf(strike.largestRate),
                               strike.impulse,
                               static_cast<double>(contact.last - contact.first) * step,
                               strike.mean,
                               contact.whole ? "yes" : "no",
                               of.rule.contact.on};
      if (weight > 0) {
        row.emplace_back(strike.peakValue / weight);
        row.push_back(CellOf(strike.averageRate.value_or(kNone) / weight));
      }
      table.rows.push_back(std::move(row));
    }
  }
  return table;
}

// The signal with a band an impact, its peak, and the line whose slope is the average rate.
FormGraph PictureOf(const Workbench& workbench, SampleRange range, const ChannelStrikes& of) {
  const Trial& trial = workbench.trial;
  FormGraph graph = SignalPicture(trial, of.channel);
  const std::vector<double> times = SamplesOf(trial, 0, range);
  FormGraph::Plot rises{.name = "20 to 80 % of the rise", .colour = kRiseColour, .width = 3.0};
  const auto timeAt = [&times](std::int64_t i) { return times[static_cast<std::size_t>(i)]; };
  std::vector<TimeSpan> impacts;
  for (std::size_t k = 0; k < of.strikes.size() && k < kMostBands; ++k) {
    const Strike& strike = of.strikes[k];
    impacts.push_back({timeAt(strike.contact.first), timeAt(strike.contact.last)});
    graph.points.push_back({.x = timeAt(strike.peak),
                            .y = strike.peakValue,
                            .text = of.strikes.size() > kMostValues
                                        ? std::string()
                                        : FormatNumber(strike.peakValue, workbench.patterns.ValuePattern),
                            .colour = kImpactColour});
    if (strike.averageRate) {
      for (const std::int64_t i : {strike.riseFrom, strike.riseTo}) {
        rises.x.push_back(timeAt(i));
        rises.y.push_back(of.signal[static_cast<std::size_t>(i)]);
      }
      rises.x.push_back(rises.x.back());
      rises.y.push_back(kNone);  // a gap
    }
  }
  AddBands(graph, impacts, kImpactColour, impacts.size() <= kMostNumberedBands);
  graph.plots = {{.name = "signal", .colour = kSignalColour, .x = times, .y = of.signal},
                 LevelLine("threshold", 0, times, of.rule.contact.on),
                 std::move(rises)};
  FitAxes(graph);
  AddRoomAbove(graph);
  return graph;
}

}  // namespace

void ShowStrikes(Workbench& workbench, const StrikesForm& form) {
  PicturesForm(workbench,
               {.name = "frmImpact",
                .title = "Impact analysis",
                .file = {.what = "Impacts", .extension = ".tab"},
                .head = {.range = form.Range(), .parameters = ParametersOf(workbench.trial, form)},
                .tables = {StrikeTable(workbench, form)}},
               ChannelNames(workbench.trial, form.Found()),
               [&](std::size_t which) { return PictureOf(workbench, form.Range(), form.Found()[which]); })
      .Show(workbench);
}

}  // namespace velmora
