#include "formats/delimited_text/delimited_text_writer.hpp"

#include <algorithm>
#include <optional>
#include <string>

#include "core/files/files.hpp"
#include "core/text/number_text.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/fixed_decimals.hpp"
#include "formats/text_block.hpp"

namespace velmora {
namespace {

constexpr int kPrinterDecimals = 5;

struct Delimited {
  std::string_view extension;
  std::string_view separator;
  bool allDigits;
};

struct ExtraLines {
  bool labels = true;
  bool times = true;
};

// Nothing when the command is cancelled.
std::optional<ExtraLines> AskContents(Workbench& workbench) {
  if (workbench.SaveQuietly) {
    return ExtraLines{};
  }
  const Button labels = workbench.questions.AskBox(
      {.title = "Include Lables?",
       .text = "Press Yes if you want the title & labels included, No if not or Cancel to quit.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (labels == Button::Cancel) {
    return std::nullopt;
  }
  const Button times = workbench.questions.AskBox({.title = "Include Sample Time?",
                                                   .text = "Press Yes if you want the sample times included.",
                                                   .icon = Icon::Question,
                                                   .buttons = {Button::Yes, Button::No}});
  return ExtraLines{.labels = labels == Button::Yes, .times = times == Button::Yes};
}

bool AskName(Workbench& workbench, const Delimited& format) {
  return AskSaveName(workbench, {.title = "Save data as",
                                 .defaultName = workbench.trial.TrialName + std::string(format.extension),
                                 .extension = std::string(format.extension),
                                 .filter = "Comma-Separated Variables (.csv)|*.csv|Printer file (.prn)|*.prn|"
                                           "Tab-delimited (.tab)|*.tab|All files (*.*)|*.*",
                                 .filterIndex = 3});
}

template <typename Fields>
std::string NamesLine(const Fields& fields, int first, int last, std::string_view separator) {
  std::string line;
  for (int c = first; c <= last; ++c) {
    line.append(Trim(OneLine(fields[static_cast<std::size_t>(c)].Text())));
    line.append(c < last ? separator : "\n");
  }
  return line;
}

std::string Head(const Trial& trial, const Delimited& format, int firstRow) {
  return Trim(OneLine(trial.TrialTitle)) + "\n" +
         "Rate=" + FormatText(FormatNumber(trial.Rate, "0.00"), "@@@@@@@@") + std::string(format.separator) +
         "Duration=" + FormatText(FormatNumber(trial.Duration, "0.000"), "@@@@@@@@@") + "\n" +
         NamesLine(trial.ChanLabel, firstRow, trial.NChan, format.separator) +
         NamesLine(trial.ChanUnits, firstRow, trial.NChan, format.separator);
}

template <bool allDigits>
void WriteSamples(const Trial& trial, ProgressPanel& panel, OutputFile& file, std::string_view separator,
                  int firstRow) {
  const std::size_t lineRoom =
      static_cast<std::size_t>(trial.NChan + 1) * (kLongestNumber + separator.size());
  TextBlock block(file);
  for (std::int32_t j = 1; j <= trial.NData; ++j) {
    const float* frame = trial.matrix.Frame(j);
    char* at = block.Begin(lineRoom);
    for (int row = firstRow; row <= trial.NChan; ++row) {
      at = allDigits ? PutShortest(at, frame[row]) : PutFixed(at, frame[row], kPrinterDecimals, 0);
      if (row < trial.NChan) {
        at = std::copy(separator.begin(), separator.end(), at);
      }
    }
    *at++ = '\n';
    block.End(at);
    if (j % kSamplesPerTurn == 0) {
      panel.SetValue(j);
    }
  }
  block.Flush();
}

// Times are a column, too.
void TellTooManyColumns(Workbench& workbench, int firstRow) {
  if (const int columns = workbench.trial.NChan - firstRow + 1; columns > kMaxChannels) {
    AddNotice(workbench, "The saved file has " + std::to_string(columns) +
                             " columns, of which this program reads " + std::to_string(kMaxChannels) +
                             ". One without times has all channels, as has a .VMB file.");
  }
}

void WriteDelimited(Workbench& workbench, ProgressPanel& panel, const Delimited& format) {
  const Trial& trial = workbench.trial;
  const std::optional<ExtraLines> contents = AskContents(workbench);
  if (!contents || !AskName(workbench, format)) {
    return;
  }
  const int firstRow = contents->times ? 0 : 1;
  OutputFile file(workbench.OutputFileName);
  if (contents->labels) {
    file.Write(Head(trial, format, firstRow));
  }
  const auto writeSamples = format.allDigits ? WriteSamples<true> : WriteSamples<false>;
  writeSamples(trial, panel, file, format.separator, firstRow);
  CommitSave(workbench, file);
  TellTooManyColumns(workbench, firstRow);
  if (!format.allDigits) {
    TellFewDigits(workbench, trial.NChan, {1, trial.NData}, kPrinterDecimals);
  }
  DidSave(workbench);
  MarkChanged(workbench, false);
}

}  // namespace

void WriteCommaSeparated(Workbench& workbench, ProgressPanel& panel) {
  WriteDelimited(workbench, panel, {.extension = ".csv", .separator = ", ", .allDigits = true});
}

void WriteSpaceDelimited(Workbench& workbench, ProgressPanel& panel) {
  WriteDelimited(workbench, panel, {.extension = ".prn", .separator = "  ", .allDigits = false});
}

void WriteTabDelimited(Workbench& workbench, ProgressPanel& panel) {
  WriteDelimited(workbench, panel, {.extension = ".tab", .separator = "\t", .allDigits = true});
}

}  // namespace velmora
