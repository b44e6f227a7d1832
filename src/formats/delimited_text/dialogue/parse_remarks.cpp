#include "formats/delimited_text/dialogue/parse_remarks.hpp"

#include <algorithm>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/data_start.hpp"
#include "formats/delimited_text/layout/first_records.hpp"
#include "formats/delimited_text/layout/found_layout.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {
namespace {

std::string OnEmptyColumns(std::string_view line, const NumberLayout& layout) {
  const std::string_view separators = ColumnSeparators(layout);
  int empty = 0;
  bool filled = false;
  for (const char c : line) {
    const bool separator = separators.find(c) != std::string_view::npos;
    empty += separator && !filled ? 1 : 0;
    filled = !separator && (filled || c != ' ');
  }
  return empty == 1 ? "One channel contains no data." : empty == 2 ? "Two channels contain no data." : "";
}

// Counted up by 1 from sample to sample: the rate that such times give is 1 Hz.
std::string OnCounter(const TextHeader& header, const FirstRecords& records, const ParseSettings& settings) {
  const int column = settings.ParseTimeColumn;
  return column <= settings.columns && records.RisesByOne(column) && !NamesSeconds(header, settings, column)
             ? "Column " + std::to_string(column) + " rises evenly by 1: a counter?"
             : "";
}

std::string OnTimes(const TextHeader& header, const ParseSettings& settings) {
  const FirstRecords records(header, settings);
  if (settings.HasTime()) {
    return OnCounter(header, records, settings);
  }
  if (settings.columns < 2) {
    return {};
  }
  const bool first = records.RisesEvenly(1);
  const bool second = records.RisesEvenly(2);
  if (!first && !second) {
    return {};
  }
  const std::string columns = first && second ? "Columns 1 and 2 rise"
                              : first         ? "Column 1 rises"
                                              : "Column 2 rises";
  return columns + " evenly: if these are sample times, check the box and enter the time column.";
}

std::string OnNames(const TextHeader& header, const ParseSettings& settings) {
  const NameLines lines = FindNameLines(header, settings);
  if (settings.labelsLine > 0 || lines.labels == 0) {
    return {};
  }
  if (lines.units > 0) {
    return "Lines " + std::to_string(lines.labels) + " and " + std::to_string(lines.units) +
           " fit the columns: enter them as labels line and units line.";
  }
  return "Line " + std::to_string(lines.labels) + " fits the columns: enter it as labels line.";
}

struct FieldCount {
  int all = 0;
  int numbers = 0;
  int leadingNumbers = 0;

  friend bool operator==(const FieldCount&, const FieldCount&) = default;
};

FieldCount CountFields(std::string_view line) {
  FieldCount count;
  float value = 0;
  for (bool more = !line.empty(); more;) {
    const std::string_view field = line.substr(0, line.find_first_of("\t,;"));
    const bool number = ReadNumber(Trim(field), false, value);
    count.leadingNumbers += number && count.numbers == count.all ? 1 : 0;
    count.numbers += number ? 1 : 0;
    ++count.all;
    more = field.size() < line.size();
    line.remove_prefix(std::min(field.size() + 1, line.size()));
  }
  return count;
}

std::string SkipTo(int line) {
  return ": skip " + std::to_string(line - 1) + " records and read ";
}

// Numbers first and text behind them.
std::string OnLeadingNumbers(int line, int numbers) {
  const std::string columns = std::to_string(numbers);
  return "Line " + std::to_string(line) + " starts with " + columns + " numbers" + SkipTo(line) + columns +
         " channels, not the full line.";
}

// Text among numbers.
std::string OnMixedLine(int line, const FieldCount& fields) {
  return "Line " + std::to_string(line) + " has " + std::to_string(fields.numbers) + " numbers in " +
         std::to_string(fields.all) + " columns" + SkipTo(line) + std::to_string(fields.all) +
         " channels; what is no number is read as 0.";
}

}  // namespace

void AddRemark(std::string& remark, std::string_view more) {
  remark += (remark.empty() || more.empty() ? "" : " ") + std::string(more);
}

std::string RemarkOnColumns(const TextHeader& header, const ParseSettings& settings) {
  std::string remark = RemarkOnDigitsAbove(header, settings);
  AddRemark(remark, OnEmptyColumns(header.Line(settings.ParseSkip + 1), settings.layout));
  AddRemark(remark, OnTimes(header, settings));
  AddRemark(remark, OnNames(header, settings));
  if (header.statedRate > 0) {
    AddRemark(remark, "The header states " + PlainNumber(header.statedRate) + " Hz.");
  }
  return remark;
}

std::string RemarkOnDigitsAbove(const TextHeader& header, const ParseSettings& settings) {
  const auto isDigit = [](const std::string& line) {
    return line.size() == 1 && kDigits.find(line[0]) != std::string_view::npos;
  };
  int first = settings.ParseSkip;
  while (isDigit(header.Line(first))) {
    --first;
  }
  const int digits = settings.ParseSkip - first;
  if (digits == 0 || settings.columns != 1) {
    return {};
  }
  return std::to_string(digits) +
         " single digits stand right above the data and are not read: if they are "
         "data, skip " +
         std::to_string(first) + " records.";
}

std::string RemarkOnMissingStart(const TextHeader& header) {
  std::vector<FieldCount> fields;
  std::transform(header.lines.begin(), header.lines.end(), std::back_inserter(fields), CountFields);
  const auto leading = std::adjacent_find(fields.begin(), fields.end(), [](const auto& a, const auto& b) {
    return a.leadingNumbers > 1 && a.leadingNumbers == b.leadingNumbers;
  });
  if (leading != fields.end()) {
    return OnLeadingNumbers(static_cast<int>(leading - fields.begin()) + 1, leading->leadingNumbers);
  }
  const auto mixed = std::adjacent_find(fields.begin(), fields.end(), [](const auto& a, const auto& b) {
    return a.numbers > 1 && 2 * a.numbers >= a.all && a.all <= kMaxChannels && a == b;
  });
  if (mixed != fields.end()) {
    return OnMixedLine(static_cast<int>(mixed - fields.begin()) + 1, *mixed);
  }
  return "No line of numbers among the first " + std::to_string(header.lines.size()) +
         ": enter the records to skip and the channels to be read.";
}

}  // namespace velmora
