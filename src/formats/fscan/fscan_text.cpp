#include "formats/fscan/fscan_text.hpp"

#include <algorithm>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

std::string_view FScanSeparators(const std::string& line) {
  return line.find_first_of("\t,;") != std::string::npos ? "\t,;" : " ";
}

std::vector<std::string> FScanCells(const std::string& line) {
  std::vector<std::string> cells = SplitFields(line, FScanSeparators(line));
  if (FScanSeparators(line) == " ") {
    std::erase(cells, "");
  }
  return cells;
}

/// The lines "KEY value" and where the table starts.
struct FScanHead {
  std::string type;
  std::string units;
  double secondsPerFrame = 0.0;
  std::vector<std::string> lines;
  std::size_t firstRecord = 0;  // line, from 1; 0: there is none
};

FScanHead ReadFScanHead(const std::string& path) {
  constexpr std::size_t kMost = 500;
  FScanHead head;
  for (const std::string& line : FirstLines(path, kMost)) {
    head.lines.push_back(line);
    if (MayBeRecord(line)) {
      head.firstRecord = head.lines.size();
      break;
    }
    const std::size_t end = line.find_first_of(" \t,:");
    const std::string key = line.substr(0, end);
    const std::string value = end == std::string::npos ? "" : Trim(line.substr(end + 1));
    if (key == "DATA_TYPE") {
      head.type = ToUpper(value);
    } else if (key == "UNITS") {
      head.units = value;
    } else if (key == "SECONDS_PER_FRAME") {
      head.secondsPerFrame = Val(value);
    }
  }
  return head;
}

std::unique_ptr<RecordingFile> OpenFScanTable(const std::string& path, int timeColumn) {
  const FScanHead head = ReadFScanHead(path);
  if (head.type.starts_with("MOVIE")) {
    throw FileError(
        "it holds a movie of the sensor's cells, which are no channels: export a graph (force over time) "
        "from the program that recorded it");
  }
  if (head.firstRecord == 0) {
    throw FileError("there is no table of numbers behind its header");
  }
  const std::vector<std::string> record = FScanCells(head.lines[head.firstRecord - 1]);
  std::vector<std::string> names =
      head.firstRecord > 1 ? FScanCells(head.lines[head.firstRecord - 2]) : std::vector<std::string>();
  names = names.size() == record.size() ? names : std::vector<std::string>(record.size());
  TextTable table;
  table.layout.firstLine = static_cast<std::int64_t>(head.firstRecord);
  table.layout.timeColumn = static_cast<int>(record.size()) > timeColumn ? timeColumn : 0;
  const double rate = head.secondsPerFrame > 0 ? RateFromTimes(1 / head.secondsPerFrame) : 0.0;
  for (std::size_t k = static_cast<std::size_t>(table.layout.timeColumn); k < record.size(); ++k) {
    const LabelAndUnit name = SplitLabel(names[k]);
    table.layout.columns.push_back(static_cast<int>(k) + 1);
    table.recording.channels.push_back(
        {.label = name.label, .units = name.unit.empty() ? head.units : name.unit, .rate = rate});
  }
  for (std::size_t k = 0; k + 1 < head.firstRecord; ++k) {
    table.recording.lines.push_back(head.lines[k]);
  }
  return OpenTextTable(path, std::move(table));
}

}  // namespace

std::unique_ptr<RecordingFile> OpenFScanText(const std::string& path) {
  return OpenFScanTable(path, 1);
}

std::unique_ptr<RecordingFile> OpenFScanGraph(const std::string& path) {
  return OpenFScanTable(path, 2);
}

}  // namespace velmora
