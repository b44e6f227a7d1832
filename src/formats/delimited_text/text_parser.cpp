#include "formats/delimited_text/text_parser.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/dialogue/parse_form.hpp"
#include "formats/delimited_text/dialogue/parse_remarks.hpp"
#include "formats/delimited_text/dialogue/read_notes.hpp"
#include "formats/delimited_text/layout/data_start.hpp"
#include "formats/delimited_text/layout/dialect_finish.hpp"
#include "formats/delimited_text/layout/dialect_keywords.hpp"
#include "formats/delimited_text/layout/first_records.hpp"
#include "formats/delimited_text/layout/found_layout.hpp"
#include "formats/delimited_text/layout/labels.hpp"
#include "formats/delimited_text/layout/rate_and_time.hpp"
#include "formats/delimited_text/scan/record_count.hpp"
#include "formats/delimited_text/scan/record_read.hpp"
#include "formats/line_blocks.hpp"
#include "formats/read_error.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kFsv = 33;
constexpr std::int16_t kReadAgain = 92;

struct DialectName {
  std::int16_t code;
  const char* text;
};

constexpr std::array kDialects = {
    DialectName{71, "XSens ASCII data"},        DialectName{82, "NI Labview SignalExpress ASCII data"},
    DialectName{62, "Delsys ASCII EMG data"},   DialectName{63, "Delsys ASCII EMG data"},
    DialectName{26, "Scope32 AMTI force data"},
};

bool OneOf(int code, std::initializer_list<int> codes) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// Dialects whose panel text and code are their caller's.
bool KeepsCode(int code) {
  return OneOf(code, {18, 23, 25, 30, 31, 34, 42, 51, 80, 81, 256, kReadAgain});
}

// The dialect's name for people; empty: none beyond that of text or of the format its code stands for.
std::string NameDialect(Trial& trial) {
  const auto* known = std::find_if(kDialects.begin(), kDialects.end(), [&trial](const DialectName& dialect) {
    return dialect.code == trial.FileTypeCode;
  });
  if (known != kDialects.end()) {
    return known->text;
  }
  if (trial.FileExt == "FIL") {
    trial.FileTypeCode = kPlainTextCode;
    return "Hybrid III ASCII data";
  }
  if (trial.FileExt == "FSV" || trial.FileExt == "TSV") {
    trial.FileTypeCode = kFsv;
    return "FSV/TSV ASCII data";
  }
  if (OneOf(trial.FileTypeCode, {91, 93})) {
    return "Visual3D ASCII data";
  }
  trial.FileTypeCode = KeepsCode(trial.FileTypeCode) ? trial.FileTypeCode : kPlainTextCode;
  return {};
}

void ShowDialect(Trial& trial, ProgressPanel& panel) {
  trial.FormatName = NameDialect(trial);
  panel.SetFormat(trial.FormatName.empty() ? "ASCII data" : trial.FormatName);
}

std::string PlainTextName(const std::string& record, const NumberLayout& layout) {
  constexpr std::array<std::pair<char, const char*>, 3> kNames = {
      {{'\t', "tab"}, {';', "semicolon"}, {',', "comma"}}};
  for (const auto& [separator, name] : kNames) {
    if (ColumnSeparators(layout).find(separator) != std::string_view::npos &&
        record.find(separator) != std::string::npos) {
      return std::string("Text, ") + name + " separated";
    }
  }
  return Trim(record).find(' ') == std::string::npos ? "Text, one column" : "Text, blank separated";
}

// Dialects that the table of readers names.
bool IsNamedByCode(int code) {
  return OneOf(code, {18, 23, 42, 51, 80});
}

// Dialects that have a column of sample times.
bool PreselectsTime(int code) {
  return OneOf(code, {42, 80, 71, 82, 23, 91, 62, 63, 30, kReadAgain, 93});
}

// The three stages over one file.
class TextParser {
 public:
  TextParser(Workbench& workbench, ProgressPanel& panel, std::optional<bool> timeBox)
      : workbench_(workbench), trial_(workbench.trial), panel_(panel), source_(trial_.FileName) {
    timeBox_ = timeBox;
  }

  /// Returns EnterParametersAgain and ReadWithoutTime when the time column was bad; else the read is
  /// over, with NData 0 when nothing was read.
  TimeOutcome Run();

 private:
  void StartTrial();
  bool ReadHeader();
  void Preselect();
  bool AskParameters();
  bool CountAndAllocate();
  bool AskBlankLines(const RecordCount& count, std::int64_t& records);
  void ReadNumbers();
  void FinishTrial();
  void NameFormat();
  void TellCounter();
  bool IsUsable();

  Workbench& workbench_;
  Trial& trial_;
  ProgressPanel& panel_;
  TextSource source_;
  std::optional<bool> timeBox_;
  TextHeader header_;
  ParseSettings settings_;
  EnteredNames entered_;
  std::string digitsAbove_;  // records that the rules leave out and nobody has looked at
  ScanFaults faults_;
};

TimeOutcome TextParser::Run() {
  StartTrial();
  if (!ReadHeader() || !AskParameters() || !CountAndAllocate()) {
    trial_.DiscardData();
    return TimeOutcome::GivenUp;
  }
  ReadNumbers();
  if (trial_.NData < 1) {
    return TimeOutcome::GivenUp;
  }
  const TimeOutcome outcome =
      settings_.HasTime() ? SettleRateFromTimes(workbench_) : SettleRateWithoutTime(workbench_);
  if (outcome != TimeOutcome::Settled || !IsUsable()) {
    trial_.DiscardData();
    return outcome;
  }
  FinishTrial();
  return outcome;
}

void TextParser::StartTrial() {
  trial_.DiscardData();
  trial_.TrialTitle = "Parsed ASCII data file: " + trial_.TrialName + "." + trial_.FileExt;
  trial_.ChanLabel.fill("");
  trial_.ChanUnits.fill("");
}

bool TextParser::ReadHeader() {
  LineBlocks blocks(source_);
  std::string line;
  while (header_.lines.size() < TextHeader::kLines && blocks.ReadTextLine(line)) {
    header_.lines.push_back(DecodeLine(line));
  }
  header_.fileEnded = header_.lines.size() < TextHeader::kLines;
  source_.Rewind();
  std::copy(header_.lines.begin(), header_.lines.end(), trial_.HeaderLines.begin() + 1);
  trial_.HeaderLineCount = static_cast<std::int32_t>(header_.lines.size());
  if (header_.fileEnded) {
    trial_.HeaderLines[++trial_.HeaderLineCount] = "End-of-file";
  }
  if (header_.lines.size() <= 2) {
    ShowFailure(workbench_, {.title = "Unreadable File",
                             .text = "Try editing or deleting the first line, then reread the file.",
                             .icon = Icon::Exclamation});
    return false;
  }
  ReadKeywords(header_, trial_.FileTypeCode);
  trial_.Rate = header_.rate > 0 ? header_.rate : trial_.Rate;
  trial_.TrialTitle = header_.title.empty() ? trial_.TrialTitle : header_.title;
  return true;
}

void TextParser::Preselect() {
  const int code = trial_.FileTypeCode;
  settings_.ParseHasTime = timeBox_.value_or(header_.hasTime || PreselectsTime(code));
  settings_.ParseTimeColumn = code == 18 && trial_.FileExt == "ASG" ? 2 : 1;
  settings_.labelsLine = header_.labelsLine;
  settings_.unitsLine = header_.unitsLine;
}

bool TextParser::AskParameters() {
  Preselect();
  std::string remark;
  if (!FindDataStart(workbench_, header_, settings_, remark)) {
    return false;
  }
  const std::int32_t skip = settings_.ParseSkip;
  ParseForm form(workbench_, header_, settings_, remark);
  form.Show(workbench_);
  digitsAbove_ = settings_.ParseSkip == skip ? RemarkOnDigitsAbove(header_, settings_) : "";
  entered_ = {trial_.ChanLabel, trial_.ChanUnits};  // StartTrial emptied them
  return form.Accepted();
}

bool TextParser::AskBlankLines(const RecordCount& count, std::int64_t& records) {
  if (count.blankLines == 0 || OneOf(trial_.FileTypeCode, {51, 82})) {
    return true;
  }
  const auto whole = [](std::int64_t number) { return FormatNumber(static_cast<double>(number), "0"); };
  const Button answer = workbench_.questions.AskBox(
      {.title = "Blank Lines in Data Stream",
       .text = "One or more blanks lines were found in the data stream.  Number of blank lines found: " +
               whole(count.blankLines) + ".\nThe blank lines were found starting at line " +
               whole(count.firstBlankLine) +
               ".\nGenerally blank lines indicate the start of another data set and should NOT be read.\n"
               "Press Yes to to continue reading the data stream, No to stop reading at the first blank "
               "line\nor press Cancel.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  records = answer == Button::No ? count.recordsBeforeBlank : records;
  return answer != Button::Cancel;
}

bool TextParser::CountAndAllocate() {
  RecordCount count;
  if (!CountRecords(workbench_, panel_, source_, settings_.ParseSkip, count)) {
    return false;
  }
  source_.Rewind();
  std::int64_t records = count.records;
  if (!AskBlankLines(count, records)) {
    return false;
  }
  records = std::min<std::int64_t>(records, std::numeric_limits<std::int32_t>::max());
  if (settings_.ParseMaxRecords > 0) {
    records = std::min<std::int64_t>(records, settings_.ParseMaxRecords);
  }
  const std::string text = FormatNumber(static_cast<double>(records), "0");
  panel_.SetStatus("Number of records= " + text);
  if (records < 1) {
    ShowFailure(workbench_, {.title = "Start of Data Not Found",
                             .text = "There are no records behind the records to skip.",
                             .icon = Icon::Exclamation});
    return false;
  }
  trial_.AllocateData(settings_.Channels(), records, SampleMatrix::Fill::None);
  panel_.SetStatus("Skipping " + std::to_string(settings_.ParseSkip) + " records");
  panel_.SetLimits(0, static_cast<double>(records));
  panel_.SetStatus("Reading " + text + " records");
  return true;
}

void TextParser::ReadNumbers() {
  SetParsedDefaults(trial_);
  if (trial_.FileTypeCode == 34) {
    ReadLabelsBeforeData(trial_, header_.Line(settings_.ParseSkip), settings_);
  }
  const std::int64_t rows = ReadRecords(trial_, panel_, source_, settings_, faults_);
  if (rows < trial_.NData) {
    trial_.ResizeData(rows);
  }
  panel_.SetStatus(std::to_string(trial_.NData) + " samples/chan.");
}

bool TextParser::IsUsable() {
  if (!IsMostlyText(faults_, trial_.NData, settings_)) {
    return true;
  }
  ShowFailure(workbench_, {.title = "Start of Data Not Found",
                           .text = "Most of what was read is no number: check the records to skip, the "
                                   "channels to be read and what separates them.\n" +
                                   NotesOnRead(faults_, trial_.NData, settings_, header_),
                           .icon = Icon::Exclamation});
  return false;
}

void TextParser::NameFormat() {
  if (trial_.FormatName.empty() && !IsNamedByCode(trial_.FileTypeCode)) {
    trial_.FormatName = PlainTextName(header_.Line(settings_.ParseSkip + 1), settings_.layout);
  }
}

// Times that count the samples give 1 Hz, which is seldom the rate of a recording.
void TextParser::TellCounter() {
  const bool counted = settings_.HasTime() && trial_.Rate == 1.0 && header_.rate == 0.0;
  const int column = settings_.ParseTimeColumn;
  if (counted && FirstRecords(header_, settings_).RisesByOne(column) &&
      !NamesSeconds(header_, settings_, column)) {
    AddNotice(workbench_, "Column " + std::to_string(column) +
                              " rises evenly by 1: a counter? Taken for times it gives 1 Hz.");
  }
}

void TextParser::FinishTrial() {
  NameFormat();
  TellCounter();
  std::string notes = NotesOnRead(faults_, trial_.NData, settings_, header_);
  const auto add = [&notes](const std::string& note) {
    notes += (notes.empty() || note.empty() ? "" : "\n") + note;
  };
  add(digitsAbove_);
  add(NoteOnRate(header_, trial_.Rate, settings_.HasTime()));
  std::fill_n(trial_.ChanRate.begin(), trial_.NChan + 1, trial_.Rate);
  add(ReadLabelsAndUnits(trial_, header_, settings_));
  const int channels = trial_.NChan;
  FinishDialect(workbench_, header_, settings_);
  RestoreEntered(trial_, entered_, channels - trial_.NChan);
  if (!notes.empty()) {
    ShowRefusal(workbench_, {.title = "Check the Data", .text = notes, .icon = Icon::Exclamation});
  }
}

}  // namespace

void ParseTextFile(Workbench& workbench, ProgressPanel& panel) {
  Trial& trial = workbench.trial;
  try {
    ShowDialect(trial, panel);
    std::optional<bool> timeBox;
    for (bool again = true; again;) {
      const TimeOutcome outcome = TextParser(workbench, panel, timeBox).Run();
      again = outcome == TimeOutcome::EnterParametersAgain || outcome == TimeOutcome::ReadWithoutTime;
      if (outcome == TimeOutcome::EnterParametersAgain) {
        trial.FileTypeCode = kReadAgain;
        timeBox = true;
      } else if (outcome == TimeOutcome::ReadWithoutTime) {
        timeBox = false;
      }
    }
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
  } catch (const std::bad_alloc&) {
    ReportReadError(workbench, "there is not enough memory");
  }
}

}  // namespace velmora
