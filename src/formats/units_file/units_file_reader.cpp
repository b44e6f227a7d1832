#include "formats/units_file/units_file_reader.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/text/text_reader.hpp"
#include "core/trial/helpers.hpp"
#include "formats/units_file/units_file_layout.hpp"

namespace velmora {
namespace {

constexpr std::size_t kUsualWidth = 11;  // ten characters and a tab

struct Widths {
  std::size_t label = kUsualWidth;
  std::size_t units = kUsualWidth;
};

struct Row {
  std::string label;
  std::string units;
  std::array<float, 3> factors{};  // scaling, high-pass and low-pass cut-off
  double threshold = 0.0;
};

std::string NextLine(TextReader& reader) {
  std::string line;
  if (!ReadTextLine(reader, line)) {
    throw FileError("the file ends too early");
  }
  return FromWindows1252(line);
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.emplace_back(text.substr(0, end));
    if (end == text.size()) {
      return parts;
    }
    text.remove_prefix(end + 1);
  }
}

// From tab to tab; a line of heads without them has columns of the usual width.
Widths WidthsOf(std::string_view heads) {
  const std::vector<std::string> columns = Split(heads, '\t');
  const auto width = [&columns](std::size_t column) {
    const std::size_t found = column + 1 < columns.size() ? CharacterCount(columns[column]) + 1 : 0;
    return found < 2 ? kUsualWidth : found;
  };
  return {.label = width(1), .units = width(2)};
}

// The columns of a line whose tabs an editor has turned into blanks.
std::vector<std::string> FixedColumns(const std::string& line, const Widths& widths) {
  const std::size_t start = std::min(line.find(':'), line.size());
  std::string rest = line.substr(std::min(start + 1, line.size()));
  rest.erase(0, rest.find_first_not_of(' '));
  std::vector<std::string> columns = {line.substr(0, start)};
  for (const std::size_t width : {widths.label, widths.units}) {
    columns.push_back(Left(rest, width));
    rest.erase(0, columns.back().size());
  }
  for (std::string& word : Split(rest, ' ')) {
    if (!word.empty()) {
      columns.push_back(std::move(word));
    }
  }
  return columns;
}

Row ParseRow(const std::string& line, const Widths& widths) {
  const bool tabs = line.find('\t') != std::string::npos;
  std::vector<std::string> columns = tabs ? Split(line, '\t') : FixedColumns(line, widths);
  Row row;
  columns.resize(4 + row.factors.size());
  row.label = Trim(columns[1]);
  row.units = Trim(columns[2]);
  std::transform(columns.begin() + 3, columns.end() - 1, row.factors.begin(), FieldNumber32);
  row.threshold = FieldNumber(columns.back());
  return row;
}

// How many channels to read; nothing after a message.
std::optional<int> ChannelsToRead(Workbench& workbench, const std::string& path,
                                  const std::string& countLine) {
  const int channels = workbench.trial.NChan;
  const std::int32_t count = RoundHalfEven32(
      Val(std::string_view(countLine).substr(std::min(units_file::kCountColumn - 1, countLine.size()))));
  if (count < 1) {
    ShowFailure(workbench, {.title = "Invalid Format or Empty",
                            .text = "Number of channels was invalid or format was invalid.",
                            .icon = Icon::Exclamation,
                            .about = path});
    return std::nullopt;
  }
  if (count != channels) {
    workbench.questions.AskBox({.title = "Different Number of Channels",
                                .text = "Number of channels is different than current file; will read all "
                                        "available channels.",
                                .icon = Icon::Information,
                                .about = path});
  }
  return std::min(count, channels);
}

// Row 0 is the abscissa. Empty after a message. Throws FileError.
std::vector<Row> ReadRows(Workbench& workbench, const std::string& path) {
  TextReader reader(path);
  const std::string first = NextLine(reader);
  if (!first.starts_with(units_file::kMagic) && !first.starts_with(units_file::kOlderMagic)) {
    throw FileError("the first line is not that of a units file");
  }
  const std::optional<int> channels = ChannelsToRead(workbench, path, NextLine(reader));
  if (!channels) {
    return {};
  }
  const Widths widths = WidthsOf(NextLine(reader));
  std::string line = NextLine(reader);
  if (!line.starts_with(units_file::kAbscissa)) {
    line = NextLine(reader);
  }
  std::vector<Row> rows = {ParseRow(line, widths)};
  for (int c = 1; c <= *channels; ++c) {
    rows.push_back(ParseRow(NextLine(reader), widths));
  }
  return rows;
}

void Apply(Workbench& workbench, const std::vector<Row>& rows) {
  for (std::size_t c = 0; c < rows.size(); ++c) {
    workbench.trial.ChanLabel[c] = rows[c].label;
    workbench.trial.ChanUnits[c] = rows[c].units;
    if (c == 0) {
      continue;
    }
    workbench.scaling.ScaleMemory[c] = rows[c].factors[0];
    workbench.filters.LastHighPassCutoffs[c] = rows[c].factors[1];
    workbench.filters.LastLowPassCutoffs[c] = rows[c].factors[2];
    workbench.thresholds.ChanThreshold[c] = rows[c].threshold;
    workbench.thresholds.ThresholdsValid |= rows[c].threshold != 0.0;
  }
  workbench.scaling.ScaleMemoryOf = workbench.LoadedFile;
  workbench.thresholds.ThresholdsOf = workbench.LoadedFile;
  workbench.filters.LastHighPassOf = workbench.filters.LastLowPassOf = workbench.LoadedFile;
  MarkChanged(workbench, true);
  if (workbench.view != nullptr) {
    workbench.view->ThresholdsChanged();
  }
}

}  // namespace

void ReadUnitsFile(Workbench& workbench) {
  if (workbench.trial.NData == 0) {
    return;
  }
  const std::vector<std::string> answer =
      workbench.questions.AskFile({.mode = FileQuestion::Mode::Open,
                                   .title = "Read Velmora Units, scaling and labels (.bsu)",
                                   .extension = ".vmu",
                                   .filter = std::string(units_file::kFilter),
                                   .directory = workbench.DataDir});
  if (answer.empty() || answer.front().empty()) {
    return;
  }
  try {
    const std::vector<Row> rows = ReadRows(workbench, answer.front());
    if (!rows.empty()) {
      Apply(workbench, rows);
      Did(workbench, "Labels, units and factors read from " + FileNamePart(answer.front()));
    }
  } catch (const FileError& error) {
    ShowFailure(workbench, {.title = "Error Reading File",
                            .text = "File does not appear to be in the correct format or could not be read.\n"
                                    "Operation is cancelled.\nError is: \"" +
                                    std::string(error.what()) + "\"\nFilename is: " + answer.front(),
                            .icon = Icon::Exclamation});
  }
}

}  // namespace velmora
