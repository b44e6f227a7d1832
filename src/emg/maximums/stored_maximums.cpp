#include "emg/maximums/stored_maximums.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/questions/result_table.hpp"
#include "core/results/result_file.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::string_view kFirstLine = "Velmora2 Maximums";
constexpr std::int64_t kLargestFile = 64 << 20;

enum Column : std::size_t { kChannel, kLabel, kUnits, kMaximum, kTime, kMethod, kWindow, kFile, kColumns };
constexpr const char* kHeads[kColumns] = {"Channel", "Label",  "Units",      "Maximum",
                                          "Time",    "Method", "Window (s)", "File"};

std::vector<std::string> Split(std::string_view line, char by) {
  std::vector<std::string> parts;
  for (std::size_t at = 0;;) {
    const std::size_t end = line.find(by, at);
    parts.emplace_back(line.substr(at, end == std::string_view::npos ? end : end - at));
    if (end == std::string_view::npos) {
      return parts;
    }
    at = end + 1;
  }
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines = Split(text, '\n');
  for (std::string& line : lines) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
  }
  return lines;
}

std::string WholeText(const std::string& path) {
  const InputFile file(path);
  if (file.Size() > kLargestFile) {
    return {};
  }
  std::string text(static_cast<std::size_t>(file.Size()), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

// Where each column stands; nothing unless label and maximum are among them.
std::optional<std::vector<std::size_t>> PlacesOf(const std::string& heads) {
  const std::vector<std::string> cells = Split(heads, '\t');
  std::vector<std::size_t> places;
  for (const char* head : kHeads) {
    places.push_back(static_cast<std::size_t>(
        std::find_if(cells.begin(), cells.end(),
                     [head](const std::string& cell) { return EqualNoCase(Trim(cell), head); }) -
        cells.begin()));
  }
  const bool found = places[kLabel] < cells.size() && places[kMaximum] < cells.size();
  return found ? std::optional(places) : std::nullopt;
}

std::optional<StoredMaximum> RowOf(const std::string& line, const std::vector<std::size_t>& places) {
  const std::vector<std::string> cells = Split(line, '\t');
  const auto cell = [&](Column column) {
    return places[column] < cells.size() ? Trim(cells[places[column]]) : std::string();
  };
  if (places[kLabel] >= cells.size() || !IsNumber(cell(kMaximum)) || !std::isfinite(Val(cell(kMaximum)))) {
    return std::nullopt;
  }
  // Channels are shown from 00 on.
  const double channel = IsNumber(cell(kChannel)) ? Val(cell(kChannel)) + 1 : 0;
  return StoredMaximum{.Channel = static_cast<std::int16_t>(std::clamp(channel, 0.0, 64.0)),
                       .Label = cell(kLabel),
                       .Units = cell(kUnits),
                       .Maximum = Val(cell(kMaximum)),
                       .Time = Val(cell(kTime)),
                       .Method = cell(kMethod),
                       .Window = Val(cell(kWindow)),
                       .File = cell(kFile)};
}

}  // namespace

const StoredMaximum* FindMaximum(const std::vector<StoredMaximum>& all, std::string_view label) {
  const auto it = std::find_if(all.begin(), all.end(), [label](const StoredMaximum& one) {
    return EqualNoCase(Trim(one.Label), Trim(label));
  });
  return it == all.end() ? nullptr : &*it;
}

bool StoreMaximum(std::vector<StoredMaximum>& all, const StoredMaximum& one, bool keepLarger) {
  const StoredMaximum* there = FindMaximum(all, one.Label);
  if (there == nullptr) {
    all.push_back(one);
    return true;
  }
  if (keepLarger && there->Maximum >= one.Maximum) {
    return false;
  }
  all[static_cast<std::size_t>(there - all.data())] = one;
  return true;
}

void TellSharedMaximums(Workbench& workbench, const std::vector<int>& channels) {
  std::vector<std::pair<std::string, std::string>> numbersOf;  // by label
  for (const int c : channels) {
    const std::string label = LabelOnOneLine(workbench.trial, c);
    const auto it = std::find_if(numbersOf.begin(), numbersOf.end(),
                                 [&](const auto& one) { return EqualNoCase(one.first, label); });
    if (it == numbersOf.end()) {
      numbersOf.emplace_back(label, ChannelNumber(c));
    } else {
      it->second += ", " + ChannelNumber(c);
    }
  }
  for (const auto& [label, numbers] : numbersOf) {
    if (numbers.find(',') == std::string::npos) {
      continue;
    }
    std::string text = "Channels ";
    text += numbers;
    text += " are all labelled \"";
    text += label;
    text += "\".  Maximums are kept by label, so these share one, the largest.";
    ShowRefusal(workbench, {.title = "Same Label", .text = text, .icon = Icon::Exclamation});
  }
}

ResultTable MaximumTable(const Workbench& workbench, const std::vector<StoredMaximum>& all) {
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  ResultTable table{.name = "frmMaximums",
                    .title = "Maximums of this session",
                    .columns = {std::begin(kHeads), std::end(kHeads)},
                    .formats = {nullptr, nullptr, nullptr, value, time, nullptr, time, nullptr}};
  for (const StoredMaximum& one : all) {
    table.rows.push_back({ChannelNumber(one.Channel), one.Label, one.Units, one.Maximum, one.Time, one.Method,
                          one.Window, one.File});
  }
  return table;
}

std::optional<std::vector<StoredMaximum>> ReadMaximums(const std::string& path) {
  const std::vector<std::string> lines = LinesOf(WholeText(path));
  if (Trim(lines.front()) != kFirstLine) {
    return std::nullopt;
  }
  auto line = lines.begin();
  std::optional<std::vector<std::size_t>> places;
  while (line != lines.end() && !places) {
    places = PlacesOf(*line++);
  }
  // A file that was cut off lacks the end of its last line.
  if (!places || !lines.back().empty()) {
    return std::nullopt;
  }
  std::vector<StoredMaximum> all;
  for (; line != lines.end() && !Trim(*line).empty(); ++line) {
    const std::optional<StoredMaximum> row = RowOf(*line, *places);
    if (!row) {
      return std::nullopt;
    }
    all.push_back(*row);
  }
  return all;
}

std::string MaximumFileText(const Workbench& workbench, const std::vector<StoredMaximum>& all) {
  const ResultTable table = MaximumTable(workbench, all);
  std::string text(kFirstLine);
  text += "\r\n";
  text += ResultFileText(workbench, {}, {&table, 1});
  return text;
}

void SaveMaximums(Workbench& workbench, const std::vector<StoredMaximum>& all) {
  if (!AskSaveName(workbench, {.title = "Save as .MAX file",
                               .defaultName = workbench.trial.TrialName + ".max",
                               .extension = ".max",
                               .filter = "Velmora2 Maximums (.max)|*.max|Text file (.txt)|*.txt|All files "
                                         "(*.*)|*.*"})) {
    return;
  }
  const std::string& path = workbench.OutputFileName;
  try {
    std::vector<StoredMaximum> merged = all;
    if (PathExists(path)) {
      const auto there = ReadMaximums(path);
      if (!there) {
        ShowFailure(workbench,
                    {.title = "Invalid File Format",
                     .text = "The file is no complete file of maximums and stays as it is: " + path,
                     .icon = Icon::Exclamation});
        return;
      }
      for (const StoredMaximum& one : *there) {
        StoreMaximum(merged, one, true);
      }
    }
    OutputFile file(path);
    file.Write(MaximumFileText(workbench, merged));
    CommitSave(workbench, file);
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
  }
}

}  // namespace velmora
