#include "formats/vi_logger/vi_logger.hpp"

#include <algorithm>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::size_t kViLoggerLines = 200;
constexpr std::size_t kViLoggerHeadLines = 6;

// Seconds of the day of a clock time ("10:15:32.25 PM") anywhere in the text; -1: there is none.
double ClockSeconds(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || colon == 0) {
    return -1.0;
  }
  std::size_t start = colon;
  while (start > 0 && text[start - 1] >= '0' && text[start - 1] <= '9') {
    --start;
  }
  const std::size_t second = text.find(':', colon + 1);
  if (start == colon) {
    return -1.0;
  }
  double hours = Val(text.substr(start));
  const std::string upper = ToUpper(text);
  const bool afternoon = upper.find("PM") != std::string::npos;
  const bool morning = upper.find("AM") != std::string::npos;
  hours = afternoon && hours < 12 ? hours + 12 : hours;
  hours = morning && hours == 12 ? 0 : hours;
  return hours * 3600 + Val(text.substr(colon + 1)) * 60 +
         (second == std::string::npos ? 0.0 : Val(text.substr(second + 1)));
}

std::string_view ClockLineSeparators(const std::string& line) {
  return line.find('\t') != std::string::npos ? "\t" : ",";
}

// A record starts with a clock time or a number, and has a value behind it.
bool IsClockRecord(const std::string& line) {
  const std::vector<std::string> cells = SplitFields(line, ClockLineSeparators(line));
  float value = 0.0F;
  return MayBeRecord(line) && cells.size() > 1 && ReadNumber(cells[1], false, value);
}

// Blanks part columns as well, so that a clock time may take several.
int ColumnsOfClock(const std::string& cell) {
  const std::string text = Trim(cell);
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), ' '));
}

double RateInHeader(const std::vector<std::string>& lines, std::size_t records) {
  for (std::size_t k = 0; k < records; ++k) {
    const std::size_t at = ToUpper(lines[k]).find("SCAN RATE");
    if (at != std::string::npos) {
      const std::size_t digit = lines[k].find_first_of("0123456789.", at);
      const double seconds = digit == std::string::npos ? 0.0 : Val(lines[k].substr(digit));
      return seconds > 0 ? RateFromTimes(1 / seconds) : 0.0;
    }
  }
  return 0.0;
}

// From the clock of all records that were looked at.
double RateOfClock(const std::vector<std::string>& lines, std::size_t records) {
  std::size_t last = records;
  while (last + 1 < lines.size() && IsClockRecord(lines[last + 1])) {
    ++last;
  }
  const auto clock = [&lines](std::size_t k) {
    return ClockSeconds(SplitFields(lines[k], ClockLineSeparators(lines[k]))[0]);
  };
  const double elapsed = clock(last) - clock(records);
  return clock(records) >= 0 && elapsed > 0 ? RateFromTimes(static_cast<double>(last - records) / elapsed)
                                            : 0.0;
}

}  // namespace

std::unique_ptr<RecordingFile> OpenViLogger(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, kViLoggerLines);
  std::size_t first = kViLoggerHeadLines;
  while (first < lines.size() && !IsClockRecord(lines[first])) {
    ++first;
  }
  if (first >= lines.size()) {
    throw FileError("there are no lines of a time and values behind its header");
  }
  const std::vector<std::string> record = SplitFields(lines[first], ClockLineSeparators(lines[first]));
  std::vector<std::string> names = SplitFields(lines[first - 1], ClockLineSeparators(lines[first]));
  names.resize(names.size() == record.size() || names.size() + 1 == record.size() ? record.size() : 0);
  const double stated = RateInHeader(lines, first);
  const double rate = stated > 0 ? stated : RateOfClock(lines, first);
  TextTable table;
  table.layout.firstLine = static_cast<std::int64_t>(first) + 1;
  const int clock = ColumnsOfClock(record[0]);
  for (std::size_t k = 1; k < record.size() && !record[k].empty(); ++k) {
    const LabelAndUnit name = names.empty() ? LabelAndUnit{} : SplitLabel(names[k]);
    table.layout.columns.push_back(clock + static_cast<int>(k));
    table.recording.channels.push_back({.label = name.label, .units = name.unit, .rate = rate});
  }
  table.recording.lines.assign(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(first));
  table.recording.lines.push_back("First sample at " + record[0]);
  return OpenTextTable(path, std::move(table));
}

}  // namespace velmora
