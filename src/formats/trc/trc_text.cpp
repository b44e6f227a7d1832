#include "formats/trc/trc_text.hpp"

#include <algorithm>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::size_t kTrcHeadLines = 50;

std::string TrcValue(const std::vector<std::string>& lines, std::string_view name) {
  const std::vector<std::string> names = SplitFields(lines[1], "\t");
  const std::vector<std::string> values = SplitFields(lines[2], "\t");
  const auto at = std::find(names.begin(), names.end(), name);
  const auto k = static_cast<std::size_t>(at - names.begin());
  return at != names.end() && k < values.size() ? values[k] : std::string();
}

}  // namespace

std::unique_ptr<RecordingFile> OpenTrc(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, kTrcHeadLines);
  constexpr std::size_t kMarkers = 3;  // the line of names, from 0
  std::size_t record = kMarkers + 1;
  while (record < lines.size() && !MayBeRecord(lines[record])) {
    ++record;
  }
  if (record >= lines.size() || !lines[0].starts_with("PathFileType")) {
    throw FileError("there are no rows of coordinates behind its header");
  }
  const std::vector<std::string> markers = SplitFields(lines[kMarkers], "\t");
  const std::size_t columns = SplitFields(lines[record], "\t").size();
  const double rate = Val(TrcValue(lines, "DataRate"));
  const std::string units = TrcValue(lines, "Units");
  TextTable table;
  table.layout.firstLine = static_cast<std::int64_t>(record) + 1;
  std::string marker;
  for (std::size_t k = 2; k < columns; ++k) {
    const std::size_t axis = (k - 2) % 3;
    if (axis == 0) {
      marker = k < markers.size() ? markers[k] : "";
    }
    if (marker.empty()) {
      continue;  // tabs at the end of the lines
    }
    table.layout.columns.push_back(static_cast<int>(k) + 1);
    table.recording.channels.push_back({.label = marker + " " + std::string("XYZ").substr(axis, 1),
                                        .units = units,
                                        .rate = rate > 0 ? rate : 0});
  }
  constexpr std::size_t kNameCell = 3;
  const std::vector<std::string> first = SplitFields(lines[0], "\t");
  table.recording.title = first.size() > kNameCell ? first[kNameCell] : "";
  const double frames = Val(TrcValue(lines, "NumFrames"));
  table.recording.promised = frames > 0 && frames < 1e12 ? static_cast<std::int64_t>(frames) : 0;
  table.recording.lines.push_back(table.recording.title);
  if (const std::string time(CellOf(lines[record], {}, 2)); Val(time) != 0.0) {
    table.recording.lines.push_back("First sample at " + time + " s");
  }
  return OpenTextTable(path, std::move(table));
}

}  // namespace velmora
