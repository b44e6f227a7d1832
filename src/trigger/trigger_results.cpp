#include "trigger/trigger_results.hpp"

#include <initializer_list>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "graph/graph.hpp"

namespace velmora {
namespace {

constexpr std::size_t kColumnsOfFirst = 6;  // the first trigger has no rate, frequency and integral

struct Row {
  std::int32_t sample = 0;
  double time = 0.0;
  double value = 0.0;
  double change = 0.0;
  double duration = 0.0;
  bool first = false;  // the next three are those of the others
  double rate = 0.0;   // per minute
  double frequency = 0.0;
  double integral = 0.0;

  [[nodiscard]] double Derivative() const { return change / duration; }
};

std::vector<Row> Rows(const Trial& trial, const TriggerResults& results) {
  std::vector<Row> rows;
  const Trigger* before = nullptr;
  for (const Trigger& trigger : results.triggers) {
    Row row{.sample = trigger.sample, .time = (trigger.sample - 1) / trial.Rate, .value = trigger.value};
    if (before == nullptr) {
      row.first = true;
      row.change = row.value;
      row.duration = row.time;
    } else {
      row.change = trigger.value - before->value;
      row.duration = (trigger.sample - before->sample) / trial.Rate;
      row.rate = 60 / row.duration;
      row.frequency = 1 / row.duration;
      row.integral = trigger.integral / trial.Rate;
    }
    rows.push_back(row);
    before = &trigger;
  }
  return rows;
}

/// Labels and units of the abscissa and of the channel, without what would break a line.
struct Names {
  std::string time;
  std::string timeUnits;
  std::string label;
  std::string units;
};

Names NamesOf(const Trial& trial, int channel) {
  const auto plain = [](const auto& text) { return OneLine(Trim(text.Text())); };
  return {plain(trial.ChanLabel[0]), plain(trial.ChanUnits[0]), plain(trial.ChanLabel[channel]),
          plain(trial.ChanUnits[channel])};
}

std::string Line(std::initializer_list<std::string> cells) {
  std::string line;
  for (const std::string& cell : cells) {
    line += (line.empty() ? "" : "\t") + cell;
  }
  return line + "\n";
}

std::string FileRow(const Row& row) {
  const auto show = [](double value, const char* pattern) { return FormatNumber(value, pattern); };
  std::string line = show(row.sample, "#####0") + "\t" + show(row.time, "0.00000") + "\t" +
                     show(row.value, "0.0000") + "\t" + show(row.change, "0.0000") + "\t" +
                     show(row.duration, "0.00000") + "\t" +
                     show(row.Derivative(), row.first ? "0.0000 " : "0.0000");
  if (!row.first) {
    line += "\t" + show(row.rate, "0.0") + "\t" + show(row.frequency, "0.00") + "\t" +
            show(row.integral, "0.0000");
  }
  return line + "\n";
}

}  // namespace

ResultTable TriggerTable(const Workbench& workbench, const TriggerResults& results) {
  const Trial& trial = workbench.trial;
  const Names names = NamesOf(trial, results.channel);
  const auto with = [](const std::string& label, const std::string& units) {
    return LabelWithUnits(label, units);
  };
  ResultTable table{
      .name = "flxCoeff",
      .title = CountOf(static_cast<std::int64_t>(results.triggers.size()), "trigger") + ", " +
               ChannelNumber(results.channel) + " " + names.label + ": " + std::string(results.kind),
      .columns = {with("Sample", "#"), with(names.time, names.timeUnits), with(names.label, names.units),
                  with("Change", names.units), with("Duration", names.timeUnits),
                  with("Deriv.", names.units + "/" + names.timeUnits), with("Rate", "/min"),
                  with("Frequency", "hertz"), with("Integral", names.units + "." + names.timeUnits)}};
  for (const Row& row : Rows(trial, results)) {
    std::vector<ResultTable::Cell>& cells = table.rows.emplace_back(table.columns.size(), std::monostate());
    std::size_t k = 0;
    for (const double number : {static_cast<double>(row.sample), row.time, row.value, row.change,
                                row.duration, row.Derivative(), row.rate, row.frequency, row.integral}) {
      if (k < kColumnsOfFirst || !row.first) {
        cells[k] = number;
      }
      ++k;
    }
  }
  const ResultTable::Format value = ThroughPattern("0.0000 ");
  table.formats = {ThroughPattern("0"),
                   value,
                   value,
                   value,
                   ThroughPattern("0.00 "),
                   value,
                   ThroughPattern("0.0"),
                   ThroughPattern("0.00"),
                   ThroughPattern("0.0000")};
  return table;
}

std::string TriggerFileText(const Workbench& workbench, const TriggerResults& results) {
  const Trial& trial = workbench.trial;
  const auto [time, timeUnits, label, units] = NamesOf(trial, results.channel);
  std::string text = Line({"File:", TrialFile(workbench), "Trial=", std::to_string(trial.TrialIndex)});
  text += Line({"Channel:", ChannelNumber(results.channel), label, "Triggering:", std::string(results.kind)});
  text += Line({"Sample", time, "Values", "Change", "deltaT", "Derivative", "Rate", "Frequency", "Integral"});
  text += Line({"number", timeUnits, units, units, timeUnits, units + "/" + timeUnits, "/min", "Hz",
                units + "." + timeUnits});
  for (const Row& row : Rows(trial, results)) {
    text += FileRow(row);
  }
  return text;
}

std::string TriggerClipboardText(const Workbench& workbench, const TriggerResults& results) {
  const Trial& trial = workbench.trial;
  const auto time = [&](std::int32_t sample) {
    return FormatNumber(SampleToTime(trial, sample), workbench.patterns.TimePattern);
  };
  return Line({"Filename:", OneLine(trial.FileName)}) + Line({"Trial:", OneLine(trial.TrialName)}) +
         Line({"Channel:", NamesOf(trial, results.channel).label, "Triggering:", std::string(results.kind)}) +
         Line({"Range:", time(results.range.lo), time(results.range.hi)}) + "Times:\n" +
         TableText(TriggerTable(workbench, results));
}

}  // namespace velmora
