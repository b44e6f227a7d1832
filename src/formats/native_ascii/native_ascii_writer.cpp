#include "formats/native_ascii/native_ascii_writer.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/files/files.hpp"
#include "core/text/number_text.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/fixed_decimals.hpp"
#include "formats/fixed_names.hpp"
#include "formats/native_ascii/native_ascii_layout.hpp"
#include "formats/text_block.hpp"

namespace velmora {
namespace {

using native_ascii::kFieldWidth;
using native_ascii::kMark;

constexpr int kMostChannels = 16;
constexpr int kDecimals = 4;
constexpr std::string_view kLineEnd = "\r\n";

bool AcceptsChannelLimit(Workbench& workbench) {
  const Box box{.title = "Too Many Channels",
                .text =
                    "Can only save 16 channels with this format.\nPress OK to continue to save first 16 or "
                    "press cancel to select a different format.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel}};
  return workbench.trial.NChan <= kMostChannels || ShowRefusal(workbench, box) == Button::OK;
}

bool AskName(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  return AskSaveName(workbench,
                     {.title = "Save data from samples " + std::to_string(trial.CursorLo) + " to " +
                               std::to_string(trial.CursorHi) + " in a .VMA file",
                      .defaultName = trial.TrialName + ".vma",
                      .extension = ".vma",
                      .filter = "Velmora1 ASCII (.vma)|*.vma|ASCII (.asc)|*.asc|All files (*.*)|*.*"});
}

// The number that the file gives its last sample; the first is 0.
std::int32_t LastSampleNumber(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const bool range = workbench.SaveRangeSet && trial.CursorLo != -1;
  return range ? trial.CursorHi - trial.CursorLo : trial.NData - 1;
}

// "* " and the rate in eight columns. A rate of nine characters takes the blank too, which the reader
// allows; longer ones lose their first digits.
std::string MarkedRate(double rate) {
  std::string text = FormatField10Short(rate);
  text.erase(0, text.find_first_not_of(' ') == 1 ? 1 : 2);
  const std::size_t width = kFieldWidth - 1;
  text = PadLeft(text, width);
  return "*" + text.substr(text.size() - width);
}

std::string HeadLines(const Workbench& workbench, int channels, std::int32_t lastSample) {
  const Trial& trial = workbench.trial;
  const double duration = trial.Rate > 0 ? lastSample / trial.Rate : 0.0;
  std::string numbers = "* Channel:";
  std::string labels = "* Time    ";
  std::string rates = MarkedRate(trial.Rate);
  for (int c = 1; c <= channels; ++c) {
    numbers += PadLeft(ChannelNumber(c), kFieldWidth);
    labels += PadRight(trial.ChanLabel[c].Text(), kFieldWidth);
    rates += FormatField10Short(trial.Rate);
  }
  const bool marked = trial.TrialTitle.starts_with(kMark);
  std::string header;
  for (const std::string& line :
       {std::string(kMark) + workbench.OutputFileName, std::string(kMark) + trial.FileName,
        (marked ? "" : std::string(kMark)) + trial.TrialTitle,
        MarkedRate(trial.Rate) + FormatField10(duration), "*        0    " + std::to_string(lastSample),
        numbers, labels, rates}) {
    header.append(ToWindows1252(OneLine(line))).append(kLineEnd);
  }
  return header;
}

// Returns how many values ran out of their fields.
std::int64_t WriteSamples(const Trial& trial, SampleRange range, ProgressPanel& panel, OutputFile& file,
                          int channels) {
  const auto [first, last] = range;
  std::int64_t tooWide = 0;
  panel.SetLimits(first, last);
  TextBlock block(file);
  for (std::int32_t j = first; j <= last; ++j) {
    const double time = trial.Rate > 0 ? static_cast<double>(j - first) / trial.Rate : 0.0;
    const std::string timeField = FormatField10(time);
    const float* frame = trial.matrix.Frame(j);
    char* at = block.Begin(timeField.size() + static_cast<std::size_t>(channels) * kLongestNumber + 2);
    at = std::copy(timeField.begin(), timeField.end(), at);
    for (int c = 1; c <= channels; ++c) {
      char* const field = at;
      at = PutFixed(at, frame[c], kDecimals, kFieldWidth);
      tooWide += at - field > static_cast<std::ptrdiff_t>(kFieldWidth) ? 1 : 0;
    }
    block.End(std::copy(kLineEnd.begin(), kLineEnd.end(), at));
    if (j % kSamplesPerTurn == 0) {
      panel.SetValue(j);
    }
  }
  block.Flush();
  return tooWide;
}

// A rate that lost its head makes another recording of the file; one that was rounded stretches it.
void TellRate(Workbench& workbench) {
  constexpr double kNegligible = 1e-6;  // a sample in a million
  const double rate = workbench.trial.Rate;
  const double written = Val(MarkedRate(rate).substr(1));
  if (std::abs(written - rate) > kNegligible * rate) {
    AddNotice(workbench, "The rate in the saved file is " + PlainNumber(written) + " Hz, that of the trial " +
                             PlainNumber(rate) + " Hz. A .VMB file keeps it.");
  }
}

// Writes the file OutputFileName, and tells what it lost.
void WriteFile(Workbench& workbench, ProgressPanel& panel, SampleRange range, int channels,
               std::int32_t lastSample) {
  const Trial& trial = workbench.trial;
  panel.SetStatus("Saving data (n= " + std::to_string(lastSample + 1) + ")");
  OutputFile file(workbench.OutputFileName);
  file.Write(HeadLines(workbench, channels, lastSample));
  const std::int64_t tooWide = WriteSamples(trial, range, panel, file, channels);
  CommitSave(workbench, file);
  if (tooWide > 0) {
    AddNotice(workbench, CountOf(tooWide, "value") +
                             " took more than the 10 columns of a .VMA field: these "
                             "samples will not be read back as they are. A .VMB file keeps them.");
  }
  TellRate(workbench);
  TellFewDigits(workbench, channels, range, kDecimals);
  DidSave(workbench);
  SavedNames names;
  names.Add(trial.TrialTitle);
  for (int c = 1; c <= channels; ++c) {
    names.Add(trial.ChanLabel[c].Text(), kFieldWidth);
  }
  names.Tell(workbench);
}

// The plates whose channels are gone, and those behind them, which are counted from the first.
void CutPlates(Workbench& workbench) {
  Trial& trial = workbench.trial;
  const auto cut =
      std::find_if(trial.FilePlates.begin(), trial.FilePlates.end(),
                   [&trial](const auto& plate) { return plate.base + plate.channels > trial.NChan; });
  if (cut != trial.FilePlates.end()) {
    trial.FilePlates.erase(cut, trial.FilePlates.end());
    trial.NPlates = static_cast<std::int16_t>(trial.FilePlates.size());
    AddNotice(workbench, "Force plates of the file that are still known: " + std::to_string(trial.NPlates) +
                             ". The channels of the others are not among the first 16.");
  }
}

}  // namespace

void WriteNativeAscii(Workbench& workbench, ProgressPanel& panel) {
  Trial& trial = workbench.trial;
  if (!AcceptsChannelLimit(workbench) || !AskName(workbench)) {
    return;
  }
  const int channels = std::min<int>(trial.NChan, kMostChannels);
  // Cursors of a single sample lie outside the trial.
  const SampleRange range{std::max(trial.CursorLo, 1), std::min(trial.CursorHi, trial.NData)};
  WriteFile(workbench, panel, range, channels, LastSampleNumber(workbench));
  if (channels < trial.NChan) {
    trial.CutChannels(channels);
    CutPlates(workbench);
    ShowFirstChannelPage(workbench);
  }
  MarkChanged(workbench, false);
}

bool WriteEnsembleAscii(Workbench& workbench, ProgressPanel& panel, const std::string& defaultName) {
  Trial& trial = workbench.trial;
  if (!AskSaveName(workbench, {.title = "Save as .VME file",
                               .defaultName = defaultName,
                               .extension = ".vme",
                               .filter = "Velmora ASCII (.vme)|*.vme"})) {
    return false;
  }
  WriteFile(workbench, panel, {1, trial.NData}, trial.NChan, trial.NData - 1);
  MarkChanged(workbench, false);
  return true;
}

}  // namespace velmora
