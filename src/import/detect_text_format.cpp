#include "import/detect_text_format.hpp"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/text_parser.hpp"
#include "formats/line_blocks.hpp"
#include "formats/read_error.hpp"
#include "import/line_end_repair.hpp"
#include "import/reader_table.hpp"

namespace velmora {
namespace {

enum class Goes { ToParser, ToReader };

// How a first line starts; columns count from 1.
struct FirstLine {
  std::string_view start;
  int code;
  Goes goes;
  std::size_t column = 1;
  bool anyCase = false;
};

constexpr std::array kFirstLines = {
    FirstLine{"File_Type:", 42, Goes::ToReader},
    FirstLine{"Formula1", 26, Goes::ToParser},
    FirstLine{"# bioPlux", 25, Goes::ToParser},
    FirstLine{"DEMG", 62, Goes::ToReader},
    FirstLine{"Label:", 63, Goes::ToReader},
    FirstLine{"Headers", 30, Goes::ToParser},
    FirstLine{"Test Date", 31, Goes::ToParser},
    FirstLine{"V3D", 91, Goes::ToParser, 1, true},
    FirstLine{"BIOBENCH", 16, Goes::ToReader},
    FirstLine{"First data point", 12, Goes::ToReader},
    FirstLine{"DATA_TYPE", 18, Goes::ToReader},
    FirstLine{"", 13, Goes::ToReader},  // an empty line, with "KIN-COM" in the next
    FirstLine{"NI VI Logger", 80, Goes::ToReader},
    FirstLine{"Scan Rate:", 23, Goes::ToReader},
    FirstLine{"ANALOG", 51, Goes::ToReader},
    FirstLine{"FORCE PLATES", 51, Goes::ToReader},
    FirstLine{"Rodex2 data", 256, Goes::ToParser},
    FirstLine{"// Start Time", 71, Goes::ToParser},
    FirstLine{"Channels", 82, Goes::ToParser},
    FirstLine{"Test Type", 34, Goes::ToParser, 2},
    FirstLine{"Specimen", 34, Goes::ToParser, 2},
};

constexpr FirstLine kVisual3D{"ITEM", 91, Goes::ToParser};
constexpr FirstLine kViconText{"Date:,", 51, Goes::ToReader};
constexpr FirstLine kViconDevices{"Devices", 51, Goes::ToReader};
constexpr FirstLine kFileFrame{"File", 93, Goes::ToParser};

bool HoldsAt(std::string_view line, std::size_t column, std::string_view text, bool anyCase = false) {
  const std::string_view here = line.substr(std::min(column - 1, line.size()), text.size());
  return anyCase ? EqualNoCase(here, text) : here == text;
}

using Lines = std::vector<std::string>;

bool Fits(const FirstLine& row, const Lines& lines) {
  if (row.start.empty()) {
    return Trim(lines[0]).empty() && lines[1].find("KIN-COM") != std::string::npos;
  }
  return HoldsAt(lines[0], row.column, row.start, row.anyCase);
}

// The first lines of the file, and empty ones behind its end.
Lines ReadHead(TextSource& source) {
  constexpr std::size_t kHeadLines = 12;
  LineBlocks blocks(source);
  Lines lines(kHeadLines);
  for (std::string& line : lines) {
    blocks.ReadTextLine(line);
  }
  return lines;
}

// "Devices" alone, its rate alone, a line of devices, and the names led by the frame's.
bool IsViconExport(const Lines& lines) {
  constexpr std::string_view kPadding = "\t,;\" \xEF\xBB\xBF";
  const auto bare = [kPadding](std::string_view line) {
    const std::size_t first = std::min(line.find_first_not_of(kPadding), line.size());
    return line.substr(first, line.find_last_not_of(kPadding) + 1 - first);
  };
  return bare(lines[0]) == "Devices" &&
         bare(lines[1]).find_first_not_of("0123456789.") == std::string_view::npos &&
         bare(lines[3]).starts_with("Frame");
}

// nullptr: nothing is recognised.
const FirstLine* Recognise(const Lines& lines, std::string_view extension) {
  for (const FirstLine& row : kFirstLines) {
    if (Fits(row, lines)) {
      return &row;
    }
  }
  if (extension == "V3D") {
    return &kVisual3D;
  }
  if (HoldsAt(lines[1], 1, "Date:,") && HoldsAt(lines[2], 1, "Time:,")) {
    return &kViconText;
  }
  if (HoldsAt(lines[2], 1, "File") && HoldsAt(lines[2], 6, "Frame")) {
    return &kFileFrame;
  }
  for (std::size_t k = 2; k < lines.size(); ++k) {
    if (HoldsAt(lines[k], 1, kVisual3D.start)) {
      return &kVisual3D;
    }
  }
  return IsViconExport(lines) ? &kViconDevices : nullptr;
}

// Returns whether the file can be read on.
bool RepairOnRequest(Workbench& workbench) {
  try {
    return OfferRepair(workbench);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return false;
  }
}

void TellUnreadable(Workbench& workbench) {
  workbench.trial.DiscardData();
  ShowFailure(
      workbench,
      {.text = "Error reading file.\n"
               "File may have incorrect format or incomplete line termination (CR/LF).\n"
               "Try opening the file with Notepad+ or Wordpad, editing the first line then saving the "
               "file.\nThis should add CR/LF to the end of each line.",
       .icon = Icon::Exclamation});
}

void RunReader(Workbench& workbench, ProgressPanel& panel, const FirstLine* found) {
  if (found != nullptr) {
    workbench.trial.FileTypeCode = static_cast<std::int16_t>(found->code);
    if (found->goes == Goes::ToReader) {
      ReadFormat(workbench, panel, FormatOfCode(found->code));
      return;
    }
  }
  ParseTextFile(workbench, panel);
}

}  // namespace

void DetectTextFormat(Workbench& workbench, ProgressPanel& panel) {
  Trial& trial = workbench.trial;
  const FirstLine* found = nullptr;
  try {
    if (RefuseEmptyFile(workbench)) {
      return;
    }
    if (HasIncompleteLineEnds(trial.FileName) && !RepairOnRequest(workbench)) {
      trial.DiscardData();
      return;
    }
    TextSource source(trial.FileName);
    found = Recognise(ReadHead(source), trial.FileExt);
  } catch (const LineTooLong&) {
    TellUnreadable(workbench);
    return;
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  RunReader(workbench, panel, found);
}

}  // namespace velmora
