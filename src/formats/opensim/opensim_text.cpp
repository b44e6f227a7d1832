#include "formats/opensim/opensim_text.hpp"

#include <algorithm>
#include <array>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::size_t kOpenSimLines = 1000;

struct OpenSimHead {
  std::string name;
  std::int64_t rows = 0;
  bool degrees = false;
  std::string dataType;
  std::size_t end = 0;  // the line "endheader", from 1; 0: there is none
};

// "nRows=52" or "datarows 101"; empty: another key.
std::string OpenSimValue(const std::string& line, std::string_view key) {
  if (line.size() <= key.size() || !EqualNoCase(line.substr(0, key.size()), key)) {
    return {};
  }
  const std::size_t at = line.find_first_not_of(" \t=", key.size());
  return at == std::string::npos || at == key.size() ? std::string() : BareText(line.substr(at));
}

OpenSimHead ReadOpenSimHead(const std::vector<std::string>& lines) {
  constexpr double kMost = 1e12;
  OpenSimHead head{.name = lines.empty() ? "" : BareText(lines[0])};
  for (std::size_t k = 0; k < lines.size() && head.end == 0; ++k) {
    const std::string line = BareText(lines[k]);
    for (const char* key : {"nRows", "datarows"}) {
      const double rows = Val(OpenSimValue(line, key));
      head.rows = rows > 0 && rows < kMost ? static_cast<std::int64_t>(rows) : head.rows;
    }
    head.degrees = head.degrees || EqualNoCase(OpenSimValue(line, "inDegrees"), "yes");
    if (const std::string type = OpenSimValue(line, "DataType"); !type.empty()) {
      head.dataType = type;
    }
    if (const std::string name = OpenSimValue(line, "name"); k == 0 && !name.empty()) {
      head.name = name;
    }
    head.end = EqualNoCase(line, "endheader") ? k + 1 : 0;
  }
  return head;
}

bool NamesForce(const std::string& label) {
  const std::string upper = ToUpper(label);
  constexpr std::array<const char*, 4> kWords = {"FORCE", "MOMENT", "TORQUE", "ACTIVATION"};
  return std::any_of(kWords.begin(), kWords.end(),
                     [&upper](const char* word) { return upper.find(word) != std::string::npos; });
}

}  // namespace

std::unique_ptr<RecordingFile> OpenOpenSim(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, kOpenSimLines);
  const OpenSimHead head = ReadOpenSimHead(lines);
  if (head.end == 0 || head.end >= lines.size()) {
    throw FileError("it has no line \"endheader\" with labels behind it");
  }
  if (!head.dataType.empty() && !EqualNoCase(head.dataType, "double")) {
    throw FileError("its columns hold values of type " + head.dataType +
                    ", which are no channels: save it as scalars");
  }
  std::size_t labelsLine = head.end;
  while (labelsLine < lines.size() && BareText(lines[labelsLine]).empty()) {
    ++labelsLine;
  }
  const std::string labels = labelsLine < lines.size() ? BareText(lines[labelsLine]) : "";
  std::vector<std::string> names = SplitFields(labels, labels.find('\t') != std::string::npos ? "\t" : " ");
  std::erase(names, "");
  if (names.size() < 2 || !EqualNoCase(names[0], "time")) {
    throw FileError("the line behind \"endheader\" does not name time and channels");
  }
  TextTable table;
  table.layout.firstLine = static_cast<std::int64_t>(labelsLine) + 2;
  table.layout.timeColumn = 1;
  for (std::size_t k = 1; k < names.size(); ++k) {
    table.layout.columns.push_back(static_cast<int>(k) + 1);
    table.recording.channels.push_back(
        {.label = names[k], .units = head.degrees && !NamesForce(names[k]) ? "deg" : ""});
  }
  table.recording.title = head.name;
  table.recording.promised = head.rows;
  table.recording.lines.assign(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(head.end) - 1);
  return OpenTextTable(path, std::move(table));
}

}  // namespace velmora
