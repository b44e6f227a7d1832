#include "formats/delimited_text/layout/found_layout.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "core/text/text.hpp"
#include "formats/delimited_text/layout/column_list.hpp"
#include "formats/delimited_text/layout/first_records.hpp"
#include "formats/delimited_text/layout/name_line.hpp"

namespace velmora {
namespace {

// Blank lines and lines drawn to part the head from the numbers.
bool SaysNothing(const std::string& line) {
  return line.find_first_not_of(" \t-_=,;*") == std::string::npos;
}

int LineWithPrefix(const TextHeader& header, int last, std::string_view name) {
  for (int k = 1; k <= last; ++k) {
    const std::string line = ToUpper(header.Line(k));
    if (HasPrefix(line) && line.substr(0, line.find(":=")).find(name) != std::string::npos) {
      return k;
    }
  }
  return 0;
}

template <typename Names>
bool IsOneOf(std::string_view name, const Names& names) {
  return std::any_of(names.begin(), names.end(), [name](auto each) { return EqualNoCase(name, each); });
}

// "Time", "t(s)", "Time [secs]"; times in other units than seconds would give a wrong rate.
bool NamesTime(const std::string& label, const std::string& unit) {
  constexpr std::array<std::string_view, 2> kNames = {"TIME", "T"};
  constexpr std::array<std::string_view, 6> kUnits = {"", "s", "sec", "secs", "second", "seconds"};
  const LabelAndUnit split = SplitLabel(label);
  return IsOneOf(split.label, kNames) && IsOneOf(split.unit.empty() ? UnitOf(unit) : split.unit, kUnits);
}

// A column's name; the units line may have it too, in front of the unit ("Time[secs]").
struct ColumnName {
  std::string label;
  std::string unit;

  ColumnName(const TextHeader& header, const ParseSettings& settings, int column) {
    const auto in = [&](int line) {
      const std::vector<std::string> names = NamesOfColumns(header.Line(line), settings.columns);
      const auto k = static_cast<std::size_t>(column) - 1;
      return line > 0 && k < names.size() ? names[k] : std::string();
    };
    unit = in(settings.unitsLine);
    label = in(settings.labelsLine);
    label = label.empty() ? unit : label;
  }
};

class Finder {
 public:
  Finder(const TextHeader& header, const ParseSettings& settings, double& rate)
      : header_(header), records_(header, settings), found_(settings), rate_(rate) {}

  ParseSettings Find() {
    rate_ = rate_ == 0.0 ? header_.statedRate : rate_;
    if (found_.columnsFound > 0 && header_.savedSeparator.empty()) {
      FindNames();
      FindTime();
      LeaveOut();
    }
    return found_;
  }

 private:
  void FindNames() {
    if (found_.labelsLine > 0) {
      return;
    }
    const NameLines lines = FindNameLines(header_, found_);
    found_.labelsLine = lines.labels;
    found_.unitsLine = found_.unitsLine > 0 ? found_.unitsLine : lines.units;
  }

  [[nodiscard]] bool HoldsTimes(int column) const {
    const ColumnName name(header_, found_, column);
    const bool counts = records_.RisesByOne(column) && !NamesSeconds(header_, found_, column);
    return NamesTime(name.label, name.unit) && !counts && records_.RisesEvenly(column) &&
           AgreesWithRate(column);
  }

  // Two rates that contradict one another are for the person to judge.
  [[nodiscard]] bool AgreesWithRate(int column) const {
    constexpr double kTolerance = 0.01;
    return rate_ == 0.0 || std::abs(records_.MeanStep(column) * rate_ - 1.0) < kTolerance;
  }

  // A time column that the dialect takes for granted and that only counts is none when the header
  // states a rate.
  void FindTime() {
    const int column = found_.ParseTimeColumn;
    if (found_.HasTime() && column <= found_.columns && rate_ > 0 && rate_ != 1.0 &&
        (records_.RisesByOne(column) || IsCounter(column))) {
      found_.ParseHasTime = false;
      leftOut_.push_back(column);
    }
    for (int k = 1; k <= found_.columns && !found_.ParseHasTime; ++k) {
      if (HoldsTimes(k)) {
        found_.ParseHasTime = true;
        found_.ParseTimeColumn = k;
        FindWholeRate(k);
      }
    }
  }

  // Times are rounded, in the file and to 32 bits: a rate this close to a whole number is that number.
  void FindWholeRate(int column) {
    constexpr double kTolerance = 1e-5;
    const double rate = 1.0 / records_.MeanStep(column);
    if (rate_ == 0.0 && std::abs(rate - std::round(rate)) < kTolerance * rate) {
      rate_ = std::round(rate);
    }
  }

  // Packets may be lost, and a sub-frame starts again with every frame: their names are enough.
  [[nodiscard]] bool IsCounter(int column) const {
    constexpr std::array<std::string_view, 7> kFrames = {"FRAME",    "FRAME#",    "FRAME #",      "SUB FRAME",
                                                         "SUBFRAME", "SUB-FRAME", "PACKETCOUNTER"};
    constexpr std::array<std::string_view, 8> kCounters = {"SAMPLE",  "#SAMPLE", "SAMPLE#", "SAMPLE #",
                                                           "COUNTER", "INDEX",   "SEQ",     "NSEQ"};
    const std::string label = ColumnName(header_, found_, column).label;
    return IsOneOf(label, kFrames) || (IsOneOf(label, kCounters) && records_.RisesByOne(column));
  }

  void LeaveOut() {
    for (int k = 1; k <= found_.columns; ++k) {
      if (!found_.IsTime(k) && (IsCounter(k) || k > records_.FilledColumns())) {
        leftOut_.push_back(k);
      }
    }
    std::sort(leftOut_.begin(), leftOut_.end());
    leftOut_.erase(std::unique(leftOut_.begin(), leftOut_.end()), leftOut_.end());
    const std::string before = found_.ParseLeaveOut;
    found_.ParseLeaveOut = ColumnListText(leftOut_);
    if (found_.Channels() < 1) {
      found_.ParseLeaveOut = before;
    }
  }

  const TextHeader& header_;
  FirstRecords records_;
  ParseSettings found_;
  double& rate_;
  std::vector<int> leftOut_;
};

}  // namespace

bool NamesSeconds(const TextHeader& header, const ParseSettings& settings, int column) {
  const ColumnName name(header, settings, column);
  return NamesTime(name.label, name.unit) && !(SplitLabel(name.label).unit + UnitOf(name.unit)).empty();
}

NameLines FindNameLines(const TextHeader& header, const ParseSettings& settings) {
  const NameLines said = {LineWithPrefix(header, settings.ParseSkip, "LABELS"),
                          LineWithPrefix(header, settings.ParseSkip, "UNITS")};
  if (said.labels > 0) {
    return said;
  }
  const int filled = FirstRecords(header, settings).FilledColumns();
  const bool separated = SeparatorsOf(header.Line(settings.ParseSkip + 1)) != " ";
  const auto fits = [&](int line) {
    return NamesColumns(header.Line(line), settings.columns, filled, separated);
  };
  int last = settings.ParseSkip;
  while (last > 0 && SaysNothing(header.Line(last))) {
    --last;
  }
  if (!fits(last)) {
    return {};
  }
  return fits(last - 1) ? NameLines{last - 1, last} : NameLines{last, said.units};
}

ParseSettings FindLayout(const TextHeader& header, const ParseSettings& settings, double& rate) {
  return Finder(header, settings, rate).Find();
}

}  // namespace velmora
