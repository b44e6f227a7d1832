#include "formats/native_binary/native_binary_reader.hpp"

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "formats/native_binary/native_samples.hpp"
#include "formats/read_error.hpp"

namespace velmora {
namespace {

using native::kFloat;

// Samples of a file that ends early are zeros, up to these many or three for each one that is there. A
// header that announces more is not believed: the trial takes what the file can be said to hold.
constexpr std::int64_t kMostZeros = std::int64_t{64} << 20;
constexpr std::int64_t kZerosForEachSample = 3;

struct Headers {
  NativeRecords records;
  std::int64_t samplesAt = 0;  // offset of the first sample
};

// What a file begins with, by one call of the system: the identification, where it has one, and all headers.
std::string ReadHead(const InputFile& file) {
  std::string head(native::kIdentificationBytes + native::kTrialRecordBytes + native::kFilmInfoBytes +
                       native::kSetupInfoBytes + native::kExptInfoBytes,
                   '\0');
  head.resize(file.ReadAt(0, head.data(), head.size()));
  return head;
}

// Throws FileError when the file ends inside a header block.
std::string TakeBlock(std::string_view head, std::size_t& offset, std::size_t bytes) {
  if (head.size() < offset + bytes) {
    throw FileError("the file ends inside its header");
  }
  offset += bytes;
  return std::string(head.substr(offset - bytes, bytes));
}

Headers TakeBlocks(std::string_view head, bool identified) {
  Headers headers;
  std::size_t at = identified ? native::kIdentificationBytes : 0;
  headers.records.TrialRecord = TakeBlock(head, at, native::kTrialRecordBytes);
  headers.records.FILMINFO = TakeBlock(head, at, native::kFilmInfoBytes);
  headers.records.SETUPINFO = TakeBlock(head, at, native::kSetupInfoBytes);
  headers.records.EXPTINFO = TakeBlock(head, at, native::kExptInfoBytes);
  headers.samplesAt = static_cast<std::int64_t>(at);
  const auto channels = native::Get<std::int16_t>(headers.records.TrialRecord, native::kNChan);
  const auto samples = native::Get<std::int32_t>(headers.records.TrialRecord, native::kNData);
  if (channels < 0 || channels > kMaxChannels || samples < 0) {
    throw FileError("the header counts impossible channels or samples");
  }
  return headers;
}

std::string TextAt(const std::string& record, std::size_t offset, std::size_t bytes) {
  return FromWindows1252(std::string_view(record).substr(offset, bytes));
}

void TakeChannel(Trial& trial, const std::string& record, int channel) {
  const auto c = static_cast<std::size_t>(channel);
  trial.ChanAutozero[c] = native::Get<std::int16_t>(record, native::kAutozero + 2 * c);
  trial.ChanNumber[c] = native::Get<std::int16_t>(record, native::kNumber + 2 * c);
  trial.ChanRate[c] = native::Get<double>(record, native::kChanRate + 8 * c);
  trial.ChanGain[c] = native::Get<double>(record, native::kGain + 8 * c);
  trial.ChanOffset[c] = native::Get<double>(record, native::kOffset + 8 * c);
  trial.ChanGraphSlot[c] = native::Get<std::int16_t>(record, native::kGraphSlot + 2 * c);
  trial.ChanColour[c] = native::Get<std::int16_t>(record, native::kColour + 2 * c);
  trial.ChanLabel[c] = TextAt(record, native::kLabel + native::kNameBytes * c, native::kNameBytes);
  trial.ChanUnits[c] = TextAt(record, native::kUnits + native::kNameBytes * c, native::kNameBytes);
}

void TakeHeaders(Workbench& workbench) {
  Trial& trial = workbench.trial;
  const std::string& record = workbench.records.TrialRecord;
  for (int line = 1; line <= native::kExperimentLines; ++line) {
    const std::size_t offset = static_cast<std::size_t>(line - 1) * native::kExperimentLineBytes;
    trial.HeaderLines[line] = TextAt(workbench.records.EXPTINFO, offset, native::kExperimentLineBytes);
  }
  trial.TrialTitle = TextAt(record, native::kTitle, native::kTitleBytes);
  trial.NChan = native::Get<std::int16_t>(record, native::kNChan);
  trial.NData = native::Get<std::int32_t>(record, native::kNData);
  trial.Rate = native::Get<double>(record, native::kRate);
  trial.Duration = native::Get<double>(record, native::kDuration);
  trial.HeaderLines[5] = "  ndata= " + FormatNumber(trial.NData, "   # ") +
                         "  sampling rate= " + FormatNumber(trial.Rate, workbench.patterns.RatePattern) +
                         "  duration= " + FormatNumber(trial.Duration, workbench.patterns.TimePattern);
  trial.HeaderLineCount = 5;
  for (int c = 0; c <= trial.NChan; ++c) {
    TakeChannel(trial, record, c);
  }
}

void ReportHeaderError(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.DiscardData();
  workbench.trial.FileTypeCode = kUnknownFileType;
  panel.SetFormat("Unknown filetype");
  ShowFailure(workbench, {.title = "File read error",
                          .text = "Error reading file.  File may be empty, corrupt, or in an unknown format.",
                          .icon = Icon::Exclamation});
}

/// What the header announces, and how much of it the file holds.
struct Extent {
  std::int64_t samples = 0;  // of each row
  std::int64_t rows = 0;
  std::int64_t held = 0;  // samples of all rows

  [[nodiscard]] bool Complete() const { return held >= rows * samples; }
  [[nodiscard]] bool Believable() const {
    return rows * samples - held <= std::max(kMostZeros, kZerosForEachSample * held);
  }
};

// Leaves out the channels of which there is no sample. When that is all of them, the trial is as long as
// there are times for it.
void CutToFile(Trial& trial, const Extent& extent) {
  const std::int64_t rows = (extent.held + extent.samples - 1) / extent.samples;
  if (rows > 1) {
    trial.NChan = static_cast<std::int16_t>(rows - 1);
    return;
  }
  trial.NData = static_cast<std::int32_t>(std::min(extent.held, kMostZeros / extent.rows));
  trial.Duration = trial.Rate > 0 ? trial.NData / trial.Rate : 0.0;
  if (trial.NData == 0) {
    throw FileError("the file holds no sample of those that it announces");
  }
}

std::string RowName(std::int64_t row) {
  return row == 0 ? "the times" : "channel " + ChannelNumber(static_cast<int>(row));
}

std::string EndsEarly(const Trial& trial, const Extent& extent) {
  std::string text = "The file ends after " + FormatCount(extent.held % extent.samples) + " of " +
                     FormatCount(extent.samples) + " samples of " + RowName(extent.held / extent.samples);
  if (trial.NData < extent.samples) {
    return text + "; no channel has a sample, and " + FormatCount(trial.NData) + " of each are 0.";
  }
  if (trial.NChan + 1 < extent.rows) {
    return text + "; the rest of it is 0, and " + std::to_string(extent.rows - 1 - trial.NChan) +
           " channels without a sample are left out.";
  }
  return text + "; the rest is 0.";
}

std::string CouldNotRead(const NativeSamplesRead::Loss& lost) {
  return FormatCount(lost.samples) + " samples could not be read, the first is sample " +
         FormatCount(lost.sample) + " of " + RowName(lost.row) + " (\"" + lost.why + "\"); they are 0.";
}

void ReportCancel(Workbench& workbench, ProgressPanel& panel, int lastRow) {
  Trial& trial = workbench.trial;
  panel.SetFormat("Reading cancelled by user");
  panel.SetStatus(std::to_string(trial.NData) + " samples/channel");
  const int channels = trial.NChan;
  if (channels == 0 || lastRow == 0) {
    trial.DiscardData();
    workbench.questions.AskBox({.text = "Reading cancelled.", .icon = Icon::Exclamation});
    return;
  }
  workbench.questions.AskBox({.text = "Reading cancelled only " + std::to_string(lastRow) + " of " +
                                      std::to_string(channels) + " channels were read.",
                              .icon = Icon::Exclamation});
  trial.CutChannels(lastRow);
}

void ReadOpened(Workbench& workbench, ProgressPanel& panel, const InputFile& file) {
  Trial& trial = workbench.trial;
  const std::string head = ReadHead(file);
  const bool identified = head.starts_with(native::kMagic);
  if (!identified) {
    // Older files have no identification line: their header blocks start at once.
    ShowRefusal(workbench,
                {.title = "File Type Error",
                 .text = "File format is not a recognizable Velmora2 binary file (.VMB) or file is corrupt.",
                 .icon = Icon::Exclamation});
  }
  panel.SetStatus("Reading trial information");
  Headers headers = TakeBlocks(head, identified);
  workbench.records = std::move(headers.records);
  TakeHeaders(workbench);
  panel.SetStatus("Header read.");
  panel.SetLimits(0, trial.NChan + 2);
  panel.SetStatus("Reading " + std::to_string(trial.NData) + " x " + std::to_string(trial.NChan) + " data");
  const Extent extent{.samples = trial.NData,
                      .rows = trial.NChan + 1,
                      .held = std::max<std::int64_t>(file.Size() - headers.samplesAt, 0) / kFloat};
  if (!extent.Believable()) {
    CutToFile(trial, extent);
  }
  const NativeSamplesRead read =
      ReadNativeSamples(trial, panel, file, {.offset = headers.samplesAt, .samples = extent.samples});
  if (!extent.Complete()) {
    AddNotice(workbench, EndsEarly(trial, extent));
  }
  if (read.lost) {
    AddNotice(workbench, CouldNotRead(*read.lost));
  }
  if (read.cancelledAfter) {
    ReportCancel(workbench, panel, *read.cancelledAfter);
  } else {
    panel.SetStatus(std::to_string(trial.NData) + " samples/channel");
  }
}

}  // namespace

void ReadNativeBinary(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.DiscardData();
  workbench.trial.FileTypeCode = native::kFileTypeCode;
  panel.SetFormat("Velmora2 binary analog (.VMB)");
  std::optional<InputFile> file;
  try {
    file.emplace(workbench.trial.FileName);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  try {
    ReadOpened(workbench, panel, *file);
  } catch (const FileError&) {
    ReportHeaderError(workbench, panel);
  } catch (const std::bad_alloc&) {
    ReportHeaderError(workbench, panel);
  }
}

void ApplyViewFlags(Workbench& workbench) {
  const auto flags = native::Get<std::int16_t>(workbench.records.FILMINFO, native::kViewFlags);
  workbench.trial.PairedGraphs = flags == native::kPairedGraphs || flags == native::kPairedAndPercentage;
  if (flags == native::kPercentage || flags == native::kPairedAndPercentage) {
    workbench.time.Base = TimeBase::Percentage;
  }
}

}  // namespace velmora
