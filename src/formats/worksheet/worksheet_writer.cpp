#include "formats/worksheet/worksheet_writer.hpp"

#include <algorithm>
#include <string>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/bytes/byte_builder.hpp"
#include "formats/text_block.hpp"

namespace velmora {
namespace {

// Records: type, length, body.
constexpr std::uint16_t kWksBegin = 0;
constexpr std::uint16_t kWksEnd = 1;
constexpr std::uint16_t kWksRange = 6;
constexpr std::uint16_t kWksNumber = 0x0E;
constexpr std::uint16_t kWksLabel = 0x0F;
constexpr std::uint16_t kWksFirstVersion = 0x0404;   // .WKS
constexpr std::uint16_t kWksSecondVersion = 0x0406;  // .WK1
constexpr std::uint8_t kWksFormat = 0xFF;

constexpr std::int32_t kWksHeadRows = 3;
constexpr std::int32_t kWksFirstRows = 2048;
constexpr std::int32_t kWksSecondRows = 8192;

bool TooLongForWorksheet(Workbench& workbench, std::int32_t rows, const char* kind) {
  const std::int32_t most = rows - kWksHeadRows;
  if (workbench.trial.NData <= most) {
    return false;
  }
  ShowRefusal(workbench, {.title = "Too Many Samples",
                          .text = std::string("A Lotus worksheet (") + kind + ") has " + FormatCount(rows) +
                                  " rows and takes " + FormatCount(most) + " samples; the trial has " +
                                  FormatCount(workbench.trial.NData) +
                                  ".\nCrop or re-sample the trial, or save it as "
                                  "text (.CSV, .TAB).",
                          .icon = Icon::Exclamation});
  return true;
}

std::string WorksheetAscii(const std::string& text) {
  constexpr std::size_t kLongest = 239;  // behind the mark of the alignment
  std::string ascii;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      ascii += byte < ' ' ? ' ' : c;
    } else if (byte >= 0xC0) {  // the first byte of a character of several
      ascii += '?';
    }
  }
  return ascii.substr(0, kLongest);
}

class Worksheet {
 public:
  Worksheet(OutputFile& file, std::uint16_t version) : file_(file) {
    Record(kWksBegin, ByteBuilder().Add(version));
  }

  void Range(int columns, std::int32_t rows) {
    Record(kWksRange, ByteBuilder()
                          .Add(std::uint16_t{0})
                          .Add(std::uint16_t{0})
                          .Add(static_cast<std::uint16_t>(columns - 1))
                          .Add(static_cast<std::uint16_t>(rows - 1)));
  }
  // Columns and rows count from 0. An empty label is no cell.
  void Label(int column, std::int32_t row, const std::string& text) {
    if (const std::string ascii = WorksheetAscii(Trim(text)); !ascii.empty()) {
      Record(kWksLabel, Cell(column, row).AddBytes("'" + ascii).Add(std::uint8_t{0}));
    }
  }
  void Number(int column, std::int32_t row, double value) {
    Record(kWksNumber, Cell(column, row).Add(value));
  }
  void Finish() {
    Record(kWksEnd, ByteBuilder());
    file_.Write(bytes_);
  }

 private:
  static ByteBuilder Cell(int column, std::int32_t row) {
    return ByteBuilder()
        .Add(kWksFormat)
        .Add(static_cast<std::uint16_t>(column))
        .Add(static_cast<std::uint16_t>(row));
  }
  void Record(std::uint16_t type, const ByteBuilder& body) {
    constexpr std::size_t kWrittenAtOnce = std::size_t{256} << 10;
    bytes_ +=
        ByteBuilder().Add(type).Add(static_cast<std::uint16_t>(body.Size())).AddBytes(body.Bytes()).Bytes();
    if (bytes_.size() > kWrittenAtOnce) {
      file_.Write(bytes_);
      bytes_.clear();
    }
  }

  OutputFile& file_;
  std::string bytes_;
};

void WriteCells(const Trial& trial, ProgressPanel& panel, Worksheet& sheet) {
  sheet.Range(trial.NChan + 1, trial.NData + kWksHeadRows);
  sheet.Label(0, 0, OneLine(trial.TrialTitle));
  for (int c = 0; c <= trial.NChan; ++c) {
    sheet.Label(c, 1, OneLine(trial.ChanLabel[c].Text()));
  }
  for (int c = 0; c <= trial.NChan; ++c) {
    sheet.Label(c, 2, OneLine(trial.ChanUnits[c].Text()));
  }
  for (std::int32_t j = 1; j <= trial.NData; ++j) {
    const float* frame = trial.matrix.Frame(j);
    for (int c = 0; c <= trial.NChan; ++c) {
      sheet.Number(c, j - 1 + kWksHeadRows, static_cast<double>(frame[c]));
    }
    if (j % kSamplesPerTurn == 0) {
      panel.SetValue(j);
    }
  }
  sheet.Finish();
}

}  // namespace

bool WorksheetRefuses(Workbench& workbench) {
  return TooLongForWorksheet(workbench, kWksSecondRows, ".WK1");
}

void WriteWorksheet(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  if (!AskSaveName(workbench,
                   {.title = "Save data as",
                    .defaultName = trial.TrialName + ".wk1",
                    .extension = ".wk1",
                    .filter = "Lotus 1-2-3 release 2 (.wk1)|*.wk1|Lotus 1-2-3 (.wks)|*.wks|All files "
                              "(*.*)|*.*"})) {
    return;
  }
  const bool firstVersion = EqualNoCase(FileExtension(workbench.OutputFileName), "wks");
  if (firstVersion && TooLongForWorksheet(workbench, kWksFirstRows, ".WKS")) {
    return;
  }
  OutputFile file(workbench.OutputFileName);
  Worksheet sheet(file, firstVersion ? kWksFirstVersion : kWksSecondVersion);
  WriteCells(trial, panel, sheet);
  CommitSave(workbench, file);
  DidSave(workbench);
  MarkChanged(workbench, false);
}

}  // namespace velmora
