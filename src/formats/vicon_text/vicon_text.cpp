#include "formats/vicon_text/vicon_text.hpp"

#include <algorithm>
#include <array>
#include <optional>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/line_blocks.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::array<std::string_view, 6> kNexusSections = {"Devices",       "Trajectories", "Joints",
                                                            "Model Outputs", "Events",       "Segments"};
constexpr std::array<std::string_view, 3> kCapitalSections = {"FORCE PLATES", "ANALOG", "TRAJECTORIES"};
// In this order of liking.
constexpr std::array<std::string_view, 3> kReadSections = {"Devices", "ANALOG", "FORCE PLATES"};

struct ViconSection {
  std::string_view name;
  std::int64_t line = 0;          // of its heading, from 1
  std::vector<std::string> head;  // the lines behind it, up to the first record behind the rate
};

// The one text of a line that has no other.
std::string OnlyCell(const std::string& line) {
  std::vector<std::string> cells = SplitFields(line, "\t,;");
  std::erase(cells, "");
  return cells.size() == 1 ? cells[0] : std::string();
}

// The section that a line is the heading of; empty: it is none.
std::string_view HeadingOf(const std::string& line) {
  const std::string cell = OnlyCell(line);
  for (const std::string_view name : kNexusSections) {
    if (cell == name) {
      return name;
    }
  }
  for (const std::string_view name : kCapitalSections) {
    if (line.find(name) != std::string::npos && line.find_first_of("0123456789") == std::string::npos) {
      return name;
    }
  }
  return {};
}

// All sections of the file with the lines between their headings and their records.
std::vector<ViconSection> FindSections(const std::string& path) {
  constexpr std::size_t kMostSections = 1000;
  constexpr std::size_t kLongestHead = 12;
  TextSource source(path);
  LineBlocks blocks(source);
  std::vector<ViconSection> sections;
  std::int64_t number = 0;
  bool inHead = false;
  for (std::string line; blocks.ReadTextLine(line) && sections.size() < kMostSections;) {
    ++number;
    const std::string text = line.size() < 100 || inHead ? DecodeLine(line) : line;
    if (const std::string_view name = MayBeRecord(text) ? "" : HeadingOf(text); !name.empty()) {
      sections.push_back({.name = name, .line = number});
      inHead = true;
    } else if (inHead) {
      std::vector<std::string>& head = sections.back().head;
      head.push_back(text);
      // The first line is the rate and may look like a record.
      inHead = (head.size() == 1 || !MayBeRecord(text)) && head.size() < kLongestHead;
    }
  }
  return sections;
}

// A header without headings: all lines above the first record.
std::optional<ViconSection> SectionOfWholeFile(const std::string& path) {
  ViconSection section{.name = "ANALOG", .line = 0};
  for (const std::string& line : FirstLines(path, 200)) {
    section.head.push_back(line);
    if (MayBeRecord(line)) {
      return section;
    }
  }
  return std::nullopt;
}

std::string_view ViconSeparators(const std::string& line) {
  return line.find_first_of("\t,;") != std::string::npos ? "\t,;" : " ";
}

// "Sample # EMG1 EMG2" is three names.
std::vector<std::string> ViconCells(std::string line) {
  const std::string_view separators = ViconSeparators(line);
  if (separators != " ") {
    return SplitFields(line, separators);
  }
  if (const std::size_t at = line.find("Sample #"); at != std::string::npos) {
    line.replace(at, 8, "Sample#");
  }
  std::vector<std::string> cells = SplitFields(line, separators);
  std::erase(cells, "");
  return cells;
}

bool NamesCounter(const std::string& cell) {
  constexpr std::array<std::string_view, 8> kCounters = {"Frame",  "Sub Frame", "Sample #", "Sample#",
                                                         "Sample", "Field #",   "Field#",   "Frame#"};
  return std::any_of(kCounters.begin(), kCounters.end(),
                     [&cell](std::string_view name) { return EqualNoCase(cell, name); });
}

bool HoldsNoNumber(const std::vector<std::string>& cells) {
  return std::none_of(cells.begin(), cells.end(), [](const std::string& cell) {
    return !cell.empty() && cell.find_first_not_of("0123456789+-.eE ") == std::string::npos;
  });
}

/// The lines of names between the rate and the first record; empty where there is none.
struct ViconNames {
  std::vector<std::string> devices;
  std::vector<std::string> labels;
  std::vector<std::string> units;
};

ViconNames FindViconNames(const std::vector<std::string>& head, std::size_t first) {
  ViconNames names;
  std::vector<std::vector<std::string>> lines;
  for (std::size_t k = first; k + 1 < head.size(); ++k) {
    if (!BareText(head[k]).empty()) {
      lines.push_back(ViconCells(head[k]));
    }
  }
  if (lines.empty()) {
    return names;
  }
  auto at = std::find_if(lines.begin(), lines.end(), [](const auto& cells) {
    return std::any_of(cells.begin(), cells.end(), NamesCounter);
  });
  if (at == lines.end()) {
    const bool unitsBelow = lines.size() > 1 && HoldsNoNumber(lines.back()) &&
                            lines.back().size() == lines[lines.size() - 2].size();
    at = lines.end() - (unitsBelow ? 2 : 1);
  }
  names.labels = *at;
  if (at != lines.begin()) {
    names.devices = *(at - 1);
  }
  if (at + 1 != lines.end() && HoldsNoNumber(*(at + 1))) {
    names.units = *(at + 1);
  }
  return names;
}

std::string ViconCell(const std::vector<std::string>& cells, std::size_t k) {
  return k < cells.size() ? cells[k] : std::string();
}

// "Imported AMTI OR6 Series Force Plate #1 - Force": the words behind the dash say what of the device it is.
// A device stands over its first channel alone.
std::string ShortDevice(const std::string& device) {
  constexpr std::string_view kImported = "Imported ";
  std::string name = device.substr(0, device.rfind(" - "));
  return name.starts_with(kImported) ? name.substr(kImported.size()) : name;
}

// The device goes before labels that others have too ("1" of two amplifiers), where both fit.
std::string ViconLabel(const ViconNames& names, const std::string& device, std::size_t column) {
  std::string label = ViconCell(names.labels, column);
  const auto same = std::count(names.labels.begin(), names.labels.end(), label);
  const bool digits = label.find_first_not_of("0123456789") == std::string::npos;
  if (device.empty() || (same < 2 && !digits)) {
    return label;
  }
  constexpr std::size_t kLongest = 30;
  const std::string name = ShortDevice(device);
  const std::size_t room = kLongest - std::min(kLongest - 1, label.size() + 1);
  return Trim(name.substr(name.size() > room ? name.size() - room : 0)) + " " + label;
}

double ViconRate(const std::vector<std::string>& head, bool besideHeading) {
  if (besideHeading) {
    return head.empty() ? 0.0 : Val(OnlyCell(head[0]));
  }
  for (const std::string& line : head) {
    const std::string upper = ToUpper(line);
    if (upper.find("RATE") != std::string::npos || upper.find("HZ") != std::string::npos) {
      const std::size_t digit = line.find_first_of("0123456789");
      return digit == std::string::npos ? 0.0 : Val(line.substr(digit));
    }
  }
  return 0.0;
}

TextTable ViconTable(const ViconSection& section) {
  TextTable table;
  const std::vector<std::string>& head = section.head;
  if (head.empty() || !MayBeRecord(head.back()) || (section.line > 0 && head.size() < 2)) {
    throw FileError("the section " + std::string(section.name) + " holds no rows of numbers");
  }
  const double rate = ViconRate(head, section.line > 0);
  const ViconNames names = FindViconNames(head, section.line > 0 ? 1 : 0);
  const std::size_t columns = std::max(ViconCells(head.back()).size(), names.labels.size());
  // Names without one for the number in front of every record.
  const bool unnamedCounter = names.labels.size() + 1 == ViconCells(head.back()).size();
  table.layout.firstLine = section.line + static_cast<std::int64_t>(head.size());
  table.layout.numbers.semicolons = head.back().find(';') != std::string::npos;
  std::string device;
  for (std::size_t k = 0; k < columns; ++k) {
    device = ViconCell(names.devices, k).empty() ? device : ViconCell(names.devices, k);
    if ((unnamedCounter && k == 0) || NamesCounter(ViconCell(names.labels, k))) {
      continue;
    }
    const std::size_t named = unnamedCounter ? k - 1 : k;
    if (ViconCell(names.labels, named).empty() && !names.labels.empty()) {
      continue;  // the padding of a line
    }
    table.layout.columns.push_back(static_cast<int>(k) + 1);
    table.recording.channels.push_back({.label = ViconLabel(names, device, named),
                                        .units = UnitOf(ViconCell(names.units, named)),
                                        .rate = rate});
  }
  table.recording.lines.push_back("Vicon " + std::string(section.name) +
                                  (rate > 0 ? ", " + PlainNumber(rate) + " Hz" : ""));
  return table;
}

const ViconSection* ChooseSection(const std::vector<ViconSection>& sections) {
  for (const std::string_view name : kReadSections) {
    for (const ViconSection& section : sections) {
      if (section.name == name) {
        return &section;
      }
    }
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<RecordingFile> OpenViconText(const std::string& path) {
  const std::vector<ViconSection> sections = FindSections(path);
  if (const ViconSection* chosen = ChooseSection(sections)) {
    TextTable table = ViconTable(*chosen);
    std::string others;
    for (const ViconSection& section : sections) {
      if (&section != chosen) {
        others += (others.empty() ? "" : ", ") + std::string(section.name);
      }
    }
    if (!others.empty()) {
      table.recording.remarks.push_back("Of the file's sections " + std::string(chosen->name) +
                                        " was read, not: " + others + ".");
    }
    return OpenTextTable(path, std::move(table));
  }
  const std::optional<ViconSection> whole = sections.empty() ? SectionOfWholeFile(path) : std::nullopt;
  if (!whole) {
    throw FileError("it has no section of analog signals (Devices, ANALOG, FORCE PLATES)");
  }
  return OpenTextTable(path, ViconTable(*whole));
}

}  // namespace velmora
