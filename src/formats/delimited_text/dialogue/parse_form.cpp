#include "formats/delimited_text/dialogue/parse_form.hpp"

#include <algorithm>
#include <limits>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/dialogue/header_form.hpp"
#include "formats/delimited_text/dialogue/parse_remarks.hpp"
#include "formats/delimited_text/layout/column_list.hpp"
#include "formats/delimited_text/layout/data_start.hpp"
#include "formats/delimited_text/layout/found_layout.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

constexpr const char* kHelp =
    "The numbers of the file are read by columns, which tabs, commas or blanks separate.\n"
    "Records to skip: lines before the first line of numbers.\n"
    "Channels to be read: columns, including the column of sample times if there is one.\n"
    "Time column: counts from 1 and is used when the box beside it is checked.\n"
    "Labels line, units line: a header line that names the columns, 0 for none.\n"
    "Columns left out: columns that are no channels, counters for instance.\n"
    "View Header shows the first lines of the file with their numbers.";

// The picker lists the trial's channels; before the read there are only columns.
int ChannelsToName(const ParseSettings& settings) {
  return std::clamp(settings.Channels(), 0, kMaxChannels);
}

}  // namespace

ParseForm::ParseForm(Workbench& workbench, const TextHeader& header, ParseSettings& settings,
                     std::string remark)
    : Form("frmParse", "ASCII File Parser"),
      workbench_(workbench),
      header_(header),
      settings_(settings),
      startRemark_(std::move(remark)),
      memory_(workbench, header, settings),
      startUnknown_(settings.columnsFound == 0) {
  AddGivenFields();
  AddFurtherFields();
  AddButtons();
  AddFound();
  FoundTaken();
}

// What the person changed in the last such file comes last: it stands against what is found.
void ParseForm::AddFound() {
  double rate = workbench_.trial.Rate;
  const ParseSettings found = FindLayout(header_, settings_, rate);
  const auto add = [this](const char* name, const std::string& text, const char* where) {
    const FormField* field = FindField(name);
    std::erase_if(found_, [field](const FoundValue& other) { return other.field == field; });
    if (text != TextOf(*field)) {
      found_.push_back({.field = field, .text = text, .where = where});
    }
  };
  const char* file = "found in the file";
  add("Rate", PlainNumber(rate), file);
  add("ParseHasTime", found.ParseHasTime ? "true" : "false", file);
  add("ParseTimeColumn", std::to_string(found.ParseTimeColumn), file);
  add("ParseLeaveOut", found.ParseLeaveOut, file);
  add("ParseLabelsLine", std::to_string(found.labelsLine), file);
  add("ParseUnitsLine", std::to_string(found.unitsLine), file);
  memory_.NoteOffered(*this);
  for (const auto& [name, text] : memory_.Changed()) {
    add(name.c_str(), text, "as in the last file");
  }
}

void ParseForm::FoundTaken() {
  remark_ = startRemark_;
  if (settings_.columnsFound > 0) {
    AddRemark(remark_, RemarkOnColumns(header_, settings_));
  }
}

void ParseForm::AddGivenFields() {
  fields_ = {
      {.name = "NChan",
       .caption = "Channels to be read",
       .target = &settings_.columns,
       .lowest = 0,
       .prompt = "Enter number of channels to be read (i.e., columns of numbers) including sample time, "
                 "if present in the data file.",
       .title = "Number of Channels to be Read",
       .edited = [this] { ColumnsEdited(); }},
      {.name = "ParseMaxRecords",
       .caption = "Records to read",
       .target = &settings_.ParseMaxRecords,
       .lowest = 0,
       .prompt = "Enter maximum number of records to read or enter 0 to read all.",
       .title = "Records to Read"},
      {.name = "Rate",
       .caption = "Sampling rate",
       .target = &workbench_.trial.Rate,
       .units = "Hz",
       .lowest = 0,
       .prompt = "Enter sampling rate per channel in samples per second (Hz).",
       .title = "Sampling Rate"},
      {.name = "ParseSkip",
       .caption = "Records to skip",
       .target = &settings_.ParseSkip,
       .lowest = 0,
       .highest = std::numeric_limits<std::int32_t>::max() - 1,  // the line behind has a number, too
       .prompt = "Enter number records before data starts.",
       .title = "Records to Skip",
       .edited = [this] { SkipEdited(); }},
      {.name = "ParseHasTime", .caption = "A column holds sample times", .target = &settings_.ParseHasTime},
      {.name = "ParseTimeColumn",
       .caption = "Time column",
       .target = &settings_.ParseTimeColumn,
       .lowest = 0,
       .prompt = "Enter channel number for time (usually 1, 0=none).",
       .title = "Time Channel"},
      {.name = "ParseSkipToEndOfLine",
       .caption = "Do not read full line of data",
       .target = &settings_.ParseSkipToEndOfLine},
      {.name = "TrialTitle",
       .caption = "Title",
       .target = &workbench_.trial.TrialTitle,
       .prompt = "Enter a brief title for this data file.",
       .title = "Trial Title"},
  };
}

void ParseForm::AddFurtherFields() {
  const std::vector<FormField> further = {
      {.name = "ParseSemicolons",
       .caption = "Semicolons separate columns",
       .target = &settings_.layout.semicolons},
      {.name = "ParseDecimalComma",
       .caption = "Decimal commas",
       .target = &settings_.layout.decimalComma,
       .edited = [this] { SkipEdited(); }},
      {.name = "ParseLabelsLine",
       .caption = "Labels line",
       .target = &settings_.labelsLine,
       .lowest = 0,
       .highest = static_cast<double>(header_.lines.size()),
       .prompt = "Enter number of the line that names the columns (0=none)."},
      {.name = "ParseUnitsLine",
       .caption = "Units line",
       .target = &settings_.unitsLine,
       .lowest = 0,
       .highest = static_cast<double>(header_.lines.size()),
       .prompt = "Enter number of the line that holds the units of the columns (0=none)."},
      {.name = "ParseLeaveOut",
       .caption = "Columns left out",
       .target = &settings_.ParseLeaveOut,
       .prompt = "Enter the columns that are no channels, e.g. 1, 2 or 5-7.",
       .title = "Columns Left Out"},
      {.name = "lblMessage", .caption = "Message", .target = &remark_, .readOnly = true},
  };
  fields_.insert(fields_.end(), further.begin(), further.end());
}

void ParseForm::AddButtons() {
  const auto stay = [](auto procedure) {
    return [procedure] {
      procedure();
      return false;
    };
  };
  buttons_ = {
      {.caption = "&Read", .role = FormButton::Role::Accept, .press = [this] { return Read(); }},
      {.caption = "&View Header",
       .press = stay([this] { ShowHeader(workbench_, workbench_.trial.FileName, settings_.ParseSkip); })},
      {.caption = "&Labels", .press = stay([this] { EditLabels(); })},
      {.caption = "&Units", .press = stay([this] { EditUnits(); })},
      {.caption = "&Title", .press = stay([this] { EditTitle(); })},
      {.caption = "&Help", .press = stay([this] { ShowHelp(); })},
      {.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }},
  };
}

void ParseForm::ColumnsEdited() {
  if (settings_.columnsFound == 0 || settings_.columns == settings_.columnsFound) {
    return;
  }
  if (settings_.columns < settings_.columnsFound) {
    workbench_.questions.AskBox({.title = "Some Data Will Be Unread",
                                 .text = "You have selected to read fewer than the actual number of columns "
                                         "in the data file.\nThe last columns will not be read.",
                                 .icon = Icon::Exclamation});
  } else {
    workbench_.questions.AskBox({.title = "Too Many Channels Selected",
                                 .text = "You have selected to read more columns than the actual number of "
                                         "columns on the data file.\nThis will likely unsynchronize the "
                                         "data channels.",
                                 .icon = Icon::Exclamation});
  }
}

// A file whose data were not found gets its columns from the line that the user points to.
void ParseForm::SkipEdited() {
  if (!startUnknown_) {
    return;
  }
  std::string line;
  try {
    TextSource source(workbench_.trial.FileName);
    LineBlocks lines(source);
    lines.SkipLines(settings_.ParseSkip);
    lines.ReadTextLine(line);
  } catch (const FileError&) {
    return;  // fields are edited inside the window's events; the read itself will tell
  }
  const int code = workbench_.trial.FileTypeCode;
  if (KindOfLine(line, settings_.layout, code) != LineKind::Data) {
    return;
  }
  if (const int columns = CountColumns(line, settings_.layout, code); CanBeRead(columns)) {
    settings_.columns = settings_.columnsFound = columns;
  }
}

bool ParseForm::Read() {
  if (!ReadColumnList(settings_.ParseLeaveOut)) {
    ShowRefusal(workbench_,
                {.title = "Columns Left Out",
                 .text = "\"" + settings_.ParseLeaveOut +
                         "\" is no list of columns.  Enter numbers from 1 to 64, e.g. 1, 2 or 5-7.",
                 .icon = Icon::Exclamation});
    return false;
  }
  if (settings_.columns > kMaxChannels) {
    ShowRefusal(workbench_, {.title = "Maximum Channels Exceeded",
                             .text = "Too many channels (>64) selected.  You must choose less than 64 "
                                     "channels.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (settings_.Channels() < 1) {
    ShowRefusal(workbench_, {.title = "Number of Channels Unknown",
                             .text = "Examine the file with a text editor and enter the correct number of "
                                     "channels in the following form.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (settings_.HasTime() && settings_.ParseTimeColumn > settings_.columns) {
    ShowRefusal(workbench_, {.title = "Time Channel",
                             .text = "The time column lies behind the last column to be read.",
                             .icon = Icon::Exclamation});
    return false;
  }
  memory_.Keep(*this);
  accepted_ = true;
  return true;
}

void ParseForm::EditLabels() {
  Trial& trial = workbench_.trial;
  trial.NChan = static_cast<std::int16_t>(ChannelsToName(settings_));
  PickNames(workbench_, "Change the labels of the channels.", trial.ChanLabel);
}

void ParseForm::EditUnits() {
  Trial& trial = workbench_.trial;
  trial.NChan = static_cast<std::int16_t>(ChannelsToName(settings_));
  PickNames(workbench_, "Change the units of the channels.", trial.ChanUnits);
}

void ParseForm::EditTitle() {
  const std::string typed =
      workbench_.questions.AskInput({.title = "Trial Title",
                                     .prompt = "Enter a brief title for this data file.",
                                     .defaultText = workbench_.trial.TrialTitle});
  if (!typed.empty()) {
    workbench_.trial.TrialTitle = typed;
  }
}

void ParseForm::ShowHelp() {
  workbench_.questions.AskBox({.title = Title(), .text = kHelp, .icon = Icon::Information});
}

}  // namespace velmora
