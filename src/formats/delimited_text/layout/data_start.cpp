#include "formats/delimited_text/layout/data_start.hpp"

#include <algorithm>

#include "core/trial/helpers.hpp"
#include "formats/delimited_text/dialogue/parse_remarks.hpp"
#include "formats/delimited_text/layout/decimal_comma.hpp"

namespace velmora {
namespace {

bool OneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}

bool ViLogger(int code) {
  return code == 80 || code == 81;
}

bool IsNumberCharacter(char c, const NumberLayout& layout, int code) {
  return c == '\t' || OneOf(c, "0123456789,.+- Ee") || (c == ';' && layout.semicolons) ||
         (ViLogger(code) && OneOf(c, "APM:"));
}

// What may stand behind a point, an exponent's letter or a sign.
bool MayFollow(char before, char c) {
  switch (before) {
    case '.':
      return OneOf(c, kDigits);
    case 'E':
    case 'e':
      return OneOf(c, "0123456789-+");
    case '+':
    case '-':
      return OneOf(c, "0123456789.");
    default:
      return true;
  }
}

int CountGroups(std::string_view line) {
  int groups = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    groups += line[i] != ' ' && (i == 0 || line[i - 1] == ' ') ? 1 : 0;
  }
  return groups;
}

int CountSeparators(std::string_view line, const NumberLayout& layout) {
  const std::string_view separators = ColumnSeparators(layout);
  return static_cast<int>(
      std::count_if(line.begin(), line.end(), [separators](char c) { return OneOf(c, separators); }));
}

// Kinds of all header lines; the line numbers count from 1, index 0 is not used.
std::vector<LineKind> KindsOf(const TextHeader& header, const NumberLayout& layout, int code) {
  std::vector<LineKind> kinds(1, LineKind::Other);
  for (const std::string& line : header.lines) {
    kinds.push_back(KindOfLine(line, layout, code));
  }
  return kinds;
}

int FirstDataLine(const std::vector<LineKind>& kinds, std::size_t from) {
  for (std::size_t k = from; k < kinds.size(); ++k) {
    if (kinds[k] == LineKind::Data) {
      return static_cast<int>(k);
    }
  }
  return 0;
}

struct TextAmongNumbers {
  int recordsAbove = 0;  // lines of numbers before the first text
  int last = 0;          // the last line of text; 0: there is none
  int later = 0;         // the first line of numbers behind it, of another shape; 0: there is none
};

TextAmongNumbers FindTextBehind(const TextHeader& header, const std::vector<LineKind>& kinds, int start,
                                const NumberLayout& layout, int code) {
  TextAmongNumbers text;
  for (auto k = static_cast<std::size_t>(start); k < kinds.size(); ++k) {
    if (kinds[k] == LineKind::Data) {
      text.recordsAbove += text.last == 0 ? 1 : 0;
    } else if (header.lines[k - 1].find_first_not_of(" \t") != std::string::npos) {
      text.last = static_cast<int>(k);
    }
  }
  const int later = text.last > 0 ? FirstDataLine(kinds, static_cast<std::size_t>(text.last)) : 0;
  const bool otherShape =
      CountColumns(header.Line(start), layout, code) != CountColumns(header.Line(later), layout, code);
  text.later = otherShape && later < static_cast<int>(header.lines.size()) ? later : 0;
  return text;
}

// A line of the header that happens to be a number (a rate, a count) would pass for the first record.
// The data start behind the text that follows it, if the lines there have another shape. Several lines
// of several columns are data themselves: there the person is told.
void PassNumbersAboveText(const TextHeader& header, const std::vector<LineKind>& kinds, int code,
                          DataStart& start) {
  const TextAmongNumbers text = FindTextBehind(header, kinds, start.line, start.layout, code);
  if (text.later == 0) {
    return;
  }
  if (text.recordsAbove == 1 || CountColumns(header.Line(start.line), start.layout, code) == 1) {
    start.remark = "Line " + std::to_string(start.line) +
                   " looks like data, but text follows it: data start at line " + std::to_string(text.later) +
                   ".";
    start.line = text.later;
    return;
  }
  start.remark = "Line " + std::to_string(text.last) + " is text, and the lines behind it have " +
                 std::to_string(CountColumns(header.Line(text.later), start.layout, code)) +
                 " columns: to read those, skip " + std::to_string(text.later - 1) + " records.";
}

Button AskNotAscii(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "NonASCII file?",
                                     .text = "File does not appear to be an ASCII file.  Press OK to "
                                             "continue, No to view file contents or Cancel.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No, Button::Cancel}});
}

bool ReachesNotAscii(const TextHeader& header, int code, int dataLine) {
  const int last = dataLine > 0 ? dataLine - 1 : static_cast<int>(header.lines.size());
  for (int k = 1; k <= last; ++k) {
    if (KindOfLine(header.Line(k), {}, code) == LineKind::NotAscii) {
      return true;
    }
  }
  return false;
}

void TellColumnsUnknown(Workbench& workbench) {
  ShowRefusal(workbench, {.title = "Number of Channels Unknown",
                          .text = "Examine the file with a text editor and enter the correct number of "
                                  "channels in the following form.",
                          .icon = Icon::Exclamation});
}

void TellStartNotFound(Workbench& workbench) {
  ShowRefusal(workbench, {.title = "Start of Data Not Found",
                          .text = "Could not find start of data.  File may not be readable.\n"
                                  "Press Cancel button in Parse menu.",
                          .icon = Icon::Exclamation});
}

}  // namespace

std::string_view ColumnSeparators(const NumberLayout& layout) {
  if (layout.decimalComma) {
    return layout.semicolons ? "\t;" : "\t";
  }
  return layout.semicolons ? "\t,;" : "\t,";
}

LineKind KindOfLine(std::string_view line, const NumberLayout& layout, int code) {
  if (line.size() < 2) {
    return LineKind::Other;
  }
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (!IsNumberCharacter(c, layout, code)) {
      return static_cast<unsigned char>(c) > '~' ? LineKind::NotAscii : LineKind::Other;
    }
    if (i == 0 || c == '\t' || c == ',' || c == ';') {
      continue;
    }
    if (code == 93 && line[i - 1] == '-' && c == ' ') {
      break;
    }
    if (!MayFollow(line[i - 1], c)) {
      return LineKind::Other;
    }
  }
  return line.find_first_of(kDigits) != std::string_view::npos ? LineKind::Data : LineKind::Other;
}

int CountColumns(std::string_view line, const NumberLayout& layout, int code) {
  const int separators = CountSeparators(line, layout);
  if (separators == 0) {
    return CountGroups(line);
  }
  return separators + (OneOf(line.back(), ColumnSeparators(layout)) ? 0 : 1) + (ViLogger(code) ? 1 : 0);
}

bool CanBeRead(double columns) {
  return columns >= 1 && columns <= kMaxChannels;
}

DataStart FindStart(const TextHeader& header, int code) {
  const std::size_t from = ViLogger(code) ? 6 : 1;
  DataStart start;
  for (const bool semicolons : {false, true}) {
    start.layout = {.semicolons = semicolons};
    const std::vector<LineKind> kinds = KindsOf(header, start.layout, code);
    start.line = header.lastLine > 0 ? header.lastLine + 1 : FirstDataLine(kinds, from);
    if (start.line > 0 && header.lastLine == 0) {
      PassNumbersAboveText(header, kinds, code, start);
    }
    if (start.line > 0) {
      break;
    }
  }
  if (start.line > 0) {
    SettleDecimalComma(header, start);
  }
  return start;
}

bool FindDataStart(Workbench& workbench, const TextHeader& header, ParseSettings& settings,
                   std::string& remark) {
  const int code = workbench.trial.FileTypeCode;
  const DataStart start = FindStart(header, code);
  if (ReachesNotAscii(header, code, start.line) && AskNotAscii(workbench) != Button::Yes) {
    return false;
  }
  remark = start.remark;
  if (start.line == 0) {
    remark = RemarkOnMissingStart(header);
    TellStartNotFound(workbench);
    return true;
  }
  settings.ParseSkip = start.line - 1;
  settings.layout = start.layout;
  const std::string line = header.Line(start.line);
  const int separators = CountSeparators(line, settings.layout);
  if (code == 91 && static_cast<int>(line.size()) == separators + 1) {
    settings.ParseSkip += 2;
  }
  const int columns = CountColumns(line, settings.layout, code);
  if (CanBeRead(columns)) {
    settings.columns = settings.columnsFound = columns;
    return true;
  }
  AddRemark(remark, "The data have " + std::to_string(columns) + " columns; " + std::to_string(kMaxChannels) +
                        " can be read.");
  settings.columns =
      CanBeRead(header.announcedColumns) ? static_cast<int>(header.announcedColumns) : workbench.trial.NChan;
  TellColumnsUnknown(workbench);
  return true;
}

}  // namespace velmora
