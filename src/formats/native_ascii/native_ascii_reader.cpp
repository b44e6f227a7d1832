#include "formats/native_ascii/native_ascii_reader.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/text/text_reader.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/text_parser.hpp"
#include "formats/native_ascii/native_ascii_layout.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "formats/read_error.hpp"

namespace velmora {
namespace {

using native_ascii::Columns;
using native_ascii::Field;

constexpr std::int16_t kAsciiFileType = 0;
constexpr std::int32_t kSamplesPerTurn = 100;

using HeaderText = std::array<std::string, native_ascii::kHeaderLineCount + 1>;  // index 0 is not used

// A last sample of 1000000 or more runs out of its field; its digits go on behind it.
std::string_view LastSampleField(std::string_view line) {
  const std::size_t start = 2 * native_ascii::kFieldWidth;
  const std::size_t end = line.size() <= start ? line.size() : line.find_first_not_of("0123456789", start);
  return Columns(line, native_ascii::kFieldWidth + 1, end - native_ascii::kFieldWidth);
}

std::int64_t CountSamples(Trial& trial, const std::string& line) {
  trial.FirstSample = RoundHalfEven32(Val(native_ascii::MarkedField(line)));
  trial.LastSample = RoundHalfEven32(Val(LastSampleField(line)));
  return std::min<std::int64_t>(std::int64_t{trial.LastSample} - trial.FirstSample + 1,
                                std::numeric_limits<std::int32_t>::max());
}

int CountChannels(const std::string& line) {
  const double fields = static_cast<double>(line.size()) / native_ascii::kFieldWidth;
  return RoundHalfEven32(fields - 1);
}

void TakeChannels(Workbench& workbench, const HeaderText& header) {
  Trial& trial = workbench.trial;
  for (int c = 0; c <= trial.NChan; ++c) {
    trial.SetChannelDefaults(c);
  }
  if (EqualNoCase(trial.FileExt, "VME")) {
    trial.ChanLabel[0] = "Percentage";
    trial.ChanUnits[0] = "%";
    workbench.time.Base = TimeBase::Percentage;
  }
  for (std::size_t c = 1; c <= static_cast<std::size_t>(trial.NChan); ++c) {
    const double number = Val(Field(header[native_ascii::kChannelsLine], c));
    trial.ChanNumber[c] = static_cast<std::int16_t>(std::clamp(RoundHalfEven32(number), -32768, 32767));
    trial.ChanLabel[c] = FromWindows1252(Field(header[native_ascii::kLabelsLine], c));
  }
}

/// Fields without a number ("nan", stars of a number that was too wide), which are read as 0.
struct NoNumbers {
  std::int64_t count = 0;
  std::int32_t sample = 0;  // of the first, and its channel
  int channel = 0;

  void Note(std::string_view field, float value, std::int32_t i, int c) {
    if (value == 0.0F && !field.empty() && !IsNumber(field) && count++ == 0) {
      sample = i;
      channel = c;
    }
  }
  void Tell(Workbench& workbench) const {
    if (count > 0) {
      AddNotice(workbench, CountOf(count, "field") + " without a number read as 0; the first is sample " +
                               std::to_string(sample) + " of channel " + ChannelNumber(channel) + ".");
    }
  }
};

// Reads up to `samples` lines; the matrix grows with the file, since a header may promise anything.
// Returns the number of lines read. Throws FileError.
std::int32_t ReadSamples(Workbench& workbench, ProgressPanel& panel, TextReader& reader,
                         std::int64_t samples) {
  Trial& trial = workbench.trial;
  const double step = trial.Rate != 0.0 ? 1 / trial.Rate : 0.0;
  std::string line;
  std::size_t lengthBefore = 0;  // of the line before the last one read
  std::size_t length = 0;
  std::int32_t count = 0;
  NoNumbers none;
  while (count < samples && ReadTextLine(reader, line)) {
    if (count == trial.NData) {
      trial.ResizeData(std::min(samples, 2 * std::int64_t{count}));
    }
    float* frame = trial.matrix.Frame(count + 1);
    frame[0] = static_cast<float>(count * step);
    for (int c = 1; c <= trial.NChan; ++c) {
      const std::string_view field = Field(line, static_cast<std::size_t>(c));
      frame[c] = FieldNumber32(field);
      none.Note(field, frame[c], count + 1, c);
    }
    lengthBefore = std::exchange(length, line.size());
    ++count;
    if (count % kSamplesPerTurn == 0) {
      panel.SetValue(count);
      if (workbench.CancelRequested) {
        break;
      }
    }
  }
  none.Tell(workbench);
  if (count > 0 && count < samples && !workbench.CancelRequested) {
    AddNotice(workbench, "The file ends after " + FormatCount(count) + " of " + FormatCount(samples) +
                             (length < lengthBefore ? " samples, and within the last one." : " samples."));
  }
  return count;
}

void ReportEmpty(Workbench& workbench) {
  workbench.trial.DiscardData();
  ShowFailure(workbench, {.title = "File Empty",
                          .text = "File was empty or unreadable.  Loading canceled.",
                          .icon = Icon::Exclamation});
}

// The lines behind the first, which is in `header` already.
void ReadTrial(Workbench& workbench, ProgressPanel& panel, TextReader& reader, HeaderText& header) {
  Trial& trial = workbench.trial;
  for (std::size_t i = 2; i <= native_ascii::kHeaderLineCount; ++i) {
    ReadTextLine(reader, header[i]);
  }
  const int channels = CountChannels(header[native_ascii::kChannelsLine]);
  if (channels > kMaxChannels) {
    throw FileError("the file has " + std::to_string(channels) + " channels; a trial holds at most 64");
  }
  for (std::size_t i = 1; i <= native_ascii::kHeaderLineCount; ++i) {
    trial.HeaderLines[i] = FromWindows1252(header[i]);
  }
  trial.HeaderLineCount = native_ascii::kHeaderLineCount;
  trial.TrialTitle = FromWindows1252(
      Columns(header[native_ascii::kTitleLine], native_ascii::kTitleColumn, native_ascii::kTitleLength));
  trial.Rate = FieldNumber(native_ascii::MarkedField(header[native_ascii::kRateLine]));
  trial.Duration = FieldNumber(Field(header[native_ascii::kRateLine], 1));
  const std::int64_t samples = CountSamples(trial, header[native_ascii::kSamplesLine]);
  if (channels < 1 || samples < 1) {
    ReportEmpty(workbench);
    return;
  }
  panel.SetStatus("Reading " + std::to_string(samples) + " x " + std::to_string(channels) + " data");
  panel.SetLimits(0, static_cast<double>(samples));
  const auto lineBytes = static_cast<std::int64_t>(native_ascii::kFieldWidth) * (channels + 1);
  const std::int64_t likely = (reader.Size() - reader.Position()) / lineBytes + 1;
  trial.AllocateData(channels, std::min(samples, likely));
  TakeChannels(workbench, header);
  const std::int32_t count = ReadSamples(workbench, panel, reader, samples);
  if (count == 0) {
    ReportEmpty(workbench);
    return;
  }
  trial.ResizeData(count);
  panel.SetStatus(std::to_string(count) + " samples/chan.");
}

void OfferTextParser(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.FileTypeCode = kUnknownFileType;
  panel.SetFormat("Unknown filetype");
  const Box box{.title = "Invalid File Format",
                .text =
                    "File is empty, corrupt or not an Velmora .VMA data file.  Press OK if file is an "
                    "ASCII file.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel}};
  if (ShowRefusal(workbench, box) == Button::OK) {
    ParseTextFile(workbench, panel);
  }
}

}  // namespace

void ReadNativeAscii(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.DiscardData();
  workbench.trial.FileTypeCode = kAsciiFileType;
  // The format has no view flags; those of a binary file read before belong to that file.
  native::Put<std::int16_t>(workbench.records.FILMINFO, native::kViewFlags, 0);
  panel.SetFormat("Velmora ASCII (.VMA)");
  try {
    TextReader reader(workbench.trial.FileName);
    HeaderText header;
    ReadTextLine(reader, header[native_ascii::kNameLine]);
    const std::string& first = header[native_ascii::kNameLine];
    if (first.starts_with(native_ascii::kMark)) {
      ReadTrial(workbench, panel, reader, header);
    } else {
      OfferTextParser(workbench, panel);
    }
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
  } catch (const std::bad_alloc&) {
    ReportReadError(workbench, "there is not enough memory");
  }
}

}  // namespace velmora
