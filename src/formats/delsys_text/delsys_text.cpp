#include "formats/delsys_text/delsys_text.hpp"

#include <algorithm>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::size_t kDelsysHeadLines = 2000;

bool NamesDelsysTimes(const std::string& cell) {
  return cell == "X[s]" || cell == "X [s]" || cell == "Time [s]" || cell == "Time[s]";
}

std::vector<std::string> DelsysCells(const std::string& line) {
  return SplitFields(line, line.find('\t') != std::string::npos ? "\t" : ",");
}

// The line that names a time column in front of every channel, from 1; 0: there is none.
std::size_t FindNamesLine(const std::vector<std::string>& lines) {
  for (std::size_t k = 0; k < lines.size(); ++k) {
    const std::vector<std::string> cells = DelsysCells(lines[k]);
    if (std::count_if(cells.begin(), cells.end(), NamesDelsysTimes) > 1) {
      return k + 1;
    }
  }
  return 0;
}

// What stands between two keys of a line: "Unit: V Domain Unit: s" has V behind "Unit:" and before " Domain".
std::string TextBetween(const std::string& line, std::string_view key, std::string_view next) {
  const std::size_t at = line.find(key);
  if (at == std::string::npos) {
    return {};
  }
  const std::size_t from = at + key.size();
  return Trim(line.substr(from, line.find(next, from) - from));
}

/// A line "Label: ... Sampling frequency: ..." for each channel, in the order of the columns.
struct DelsysChannel {
  std::string label;
  std::string units;
  double rate = 0.0;
  double points = 0.0;
};

std::vector<DelsysChannel> ReadDescriptions(const std::vector<std::string>& lines, std::size_t namesLine) {
  std::vector<DelsysChannel> described;
  for (std::size_t k = 0; k + 1 < namesLine; ++k) {
    if (lines[k].starts_with("Label:")) {
      described.push_back({.label = TextBetween(lines[k], "Label:", " Sampling frequency:"),
                           .units = TextBetween(lines[k], " Unit:", " Domain Unit:"),
                           .rate = Val(TextBetween(lines[k], "Sampling frequency:", " Number of points:")),
                           .points = Val(TextBetween(lines[k], "Number of points:", " start:"))});
    }
  }
  return described;
}

// From the first two times of a column; 0: they do not tell.
double RateOfColumn(const std::vector<std::string>& lines, std::size_t namesLine, std::size_t column) {
  if (namesLine + 1 >= lines.size()) {
    return 0.0;
  }
  const std::vector<std::string> first = DelsysCells(lines[namesLine]);
  const std::vector<std::string> second = DelsysCells(lines[namesLine + 1]);
  const double step =
      column < first.size() && column < second.size() ? Val(second[column]) - Val(first[column]) : 0.0;
  return step > 0 ? RateFromTimes(1 / step) : 0.0;
}

TextTable DelsysTable(const std::vector<std::string>& lines, std::size_t namesLine) {
  TextTable table;
  table.layout.firstLine = static_cast<std::int64_t>(namesLine) + 1;
  const std::vector<DelsysChannel> described = ReadDescriptions(lines, namesLine);
  const std::vector<std::string> names = DelsysCells(lines[namesLine - 1]);
  double fastest = 0.0;
  double promised = 0.0;
  for (std::size_t k = 0; k + 1 < names.size(); ++k) {
    if (!NamesDelsysTimes(names[k]) || NamesDelsysTimes(names[k + 1])) {
      continue;
    }
    const std::size_t channel = table.recording.channels.size();
    const DelsysChannel what = channel < described.size() ? described[channel] : DelsysChannel{};
    RecordedChannel recorded{.label = names[k + 1].empty() ? what.label : names[k + 1],
                             .units = what.units,
                             .rate = what.rate > 0 ? what.rate : RateOfColumn(lines, namesLine, k)};
    if (recorded.rate > fastest) {
      fastest = recorded.rate;
      promised = what.points;
      table.layout.timeColumn = static_cast<int>(k) + 1;
    }
    table.layout.columns.push_back(static_cast<int>(k) + 2);
    table.recording.channels.push_back(std::move(recorded));
  }
  constexpr double kLargest = 1e15;
  table.recording.promised = promised > 0 && promised < kLargest ? static_cast<std::int64_t>(promised) : 0;
  return table;
}

}  // namespace

bool HasTimeColumns(const std::string& path) {
  return FindNamesLine(FirstLines(path, kDelsysHeadLines)) > 0;
}

std::unique_ptr<RecordingFile> OpenDelsysText(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, kDelsysHeadLines);
  const std::size_t namesLine = FindNamesLine(lines);
  if (namesLine == 0) {
    throw FileError("it has no line that names a time column for each channel");
  }
  return OpenTextTable(path, DelsysTable(lines, namesLine));
}

}  // namespace velmora
