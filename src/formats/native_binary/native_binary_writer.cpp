#include "formats/native_binary/native_binary_writer.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/transpose.hpp"
#include "core/version.hpp"
#include "formats/fixed_names.hpp"
#include "formats/native_binary/native_binary_layout.hpp"

namespace velmora {
namespace {

using native::kFloat;
using native::kPieceSamples;
using native::kPieceStride;

void PutText(std::string& record, std::size_t offset, std::size_t bytes, std::string_view text) {
  std::string field = ToWindows1252(text);
  field.resize(bytes, ' ');
  record.replace(offset, bytes, field);
}

void PutChannel(std::string& record, const Trial& trial, int channel) {
  const auto c = static_cast<std::size_t>(channel);
  native::Put(record, native::kAutozero + 2 * c, trial.ChanAutozero[c]);
  native::Put(record, native::kNumber + 2 * c, trial.ChanNumber[c]);
  native::Put(record, native::kChanRate + 8 * c, trial.ChanRate[c]);
  native::Put(record, native::kGain + 8 * c, trial.ChanGain[c]);
  native::Put(record, native::kOffset + 8 * c, trial.ChanOffset[c]);
  native::Put(record, native::kGraphSlot + 2 * c, trial.ChanGraphSlot[c]);
  native::Put(record, native::kColour + 2 * c, trial.ChanColour[c]);
  PutText(record, native::kLabel + native::kNameBytes * c, native::kNameBytes, trial.ChanLabel[c].Text());
  PutText(record, native::kUnits + native::kNameBytes * c, native::kNameBytes, trial.ChanUnits[c].Text());
}

// Entries above NChan keep what the last file read had there.
void FillTrialRecord(std::string& record, const Trial& trial, std::int32_t samples) {
  PutText(record, native::kTitle, native::kTitleBytes, Trim(trial.TrialTitle));
  native::Put(record, native::kNChan, trial.NChan);
  native::Put(record, native::kNData, samples);
  native::Put(record, native::kRate, trial.Rate);
  native::Put(record, native::kDuration, samples / trial.Rate);
  for (int c = 0; c <= trial.NChan; ++c) {
    PutChannel(record, trial, c);
  }
}

void FillViewFlags(std::string& filmInfo, const Workbench& workbench) {
  const bool paired = workbench.trial.PairedGraphs;
  const bool percentage = workbench.time.Base == TimeBase::Percentage;
  std::int16_t flags = 0;
  if (paired && percentage) {
    flags = native::kPairedAndPercentage;
  } else if (percentage) {
    flags = native::kPercentage;
  } else if (paired) {
    flags = native::kPairedGraphs;
  }
  native::Put(filmInfo, native::kViewFlags, flags);
}

std::string IdentificationLine() {
  return PadRight(native::kIdentification + std::string(VersionText), native::kIdentificationBytes);
}

// Cursors that a command left behind a shorter trial are an error of the run, not memory of others.
void CheckRange(const Trial& trial, SampleRange range) {
  if (range.lo < 1 || range.lo > range.hi || range.hi > trial.NData) {
    throw std::out_of_range("The samples " + std::to_string(range.lo) + " to " + std::to_string(range.hi) +
                            " between the cursors are not in the trial.");
  }
}

// Times are those of the first samples wherever the range lies, so that a stretch starts at time 0.
// All rows grow side by side; the channels are told off one by one as that goes on.
void WriteSamples(const Trial& trial, ProgressPanel& panel, OutputFile& file, std::int64_t offset,
                  SampleRange range) {
  const std::int64_t samples = std::int64_t{range.hi} - range.lo + 1;
  const int rows = trial.NChan + 1;
  std::vector<float> pieces(static_cast<std::size_t>(rows * kPieceStride));
  int told = 0;
  panel.SetStatus("Saving times");
  const auto thousands = [](std::int64_t upTo) { return (upTo - 1) / 1000; };
  panel.SetLimits(0, static_cast<double>(thousands(samples)));
  for (std::int64_t done = 0; done < samples; done += kPieceSamples) {
    const std::int64_t count = std::min(kPieceSamples, samples - done);
    const float* frames = trial.matrix.Frame(range.lo + done);
    FramesToRows(frames, trial.matrix.Stride(), rows, count, pieces.data(), kPieceStride);
    for (std::int64_t k = 0; k < count; ++k) {
      pieces[static_cast<std::size_t>(k)] = trial.matrix.Frame(done + k + 1)[0];
    }
    for (int row = 0; row < rows; ++row) {
      file.WriteAt(offset + (row * samples + done) * kFloat, pieces.data() + row * kPieceStride,
                   static_cast<std::size_t>(count * kFloat));
    }
    while (told < trial.NChan * (done + count) / samples) {
      panel.SetStatus("Saving channel " + std::to_string(++told));
    }
    panel.SetValue(static_cast<double>(thousands(done + count)));
  }
}

void WriteFile(Workbench& workbench, ProgressPanel& panel, OutputFile& file, SampleRange range) {
  const Trial& trial = workbench.trial;
  NativeRecords& records = workbench.records;
  FillTrialRecord(records.TrialRecord, trial, range.hi - range.lo + 1);
  panel.SetStatus("Saving header information");
  FillViewFlags(records.FILMINFO, workbench);
  const std::string headers =
      IdentificationLine() + records.TrialRecord + records.FILMINFO + records.SETUPINFO + records.EXPTINFO;
  file.Write(headers);
  WriteSamples(trial, panel, file, static_cast<std::int64_t>(headers.size()), range);
  CommitSave(workbench, file);
}

void TellLostNames(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  SavedNames names;
  names.Add(Trim(trial.TrialTitle), native::kTitleBytes);
  for (int c = 0; c <= trial.NChan; ++c) {
    names.Add(trial.ChanLabel[c].Text(), native::kNameBytes);
    names.Add(trial.ChanUnits[c].Text(), native::kNameBytes);
  }
  names.Tell(workbench);
}

}  // namespace

void WriteNativeRange(Workbench& workbench, ProgressPanel& panel, const std::string& path,
                      SampleRange range) {
  CheckRange(workbench.trial, range);
  OutputFile file(path);
  WriteFile(workbench, panel, file, range);
}

void WriteNativeBinary(Workbench& workbench, ProgressPanel& panel) {
  if (!AskSaveName(workbench, {.title = "Save data in Velmora2/3 binary (.VMB) file",
                               .defaultName = workbench.trial.TrialName + ".vmb",
                               .extension = ".vmb",
                               .filter = "Velmora2/3 binary (.vmb)|*.vmb|All files (*.*)|*.*"})) {
    return;
  }
  OutputFile file(workbench.OutputFileName, OutputFile::Mode::KeepTail);
  const SampleRange range = AskCursorRange(workbench);
  CheckRange(workbench.trial, range);
  WriteFile(workbench, panel, file, range);
  DidSave(workbench,
          range.lo == 1 && range.hi == workbench.trial.NData
              ? "Saved"
              : "Saved samples " + std::to_string(range.lo) + " to " + std::to_string(range.hi) + " as");
  TellLostNames(workbench);
  MarkChanged(workbench, false);
  if (workbench.UserLevel == UserLevelKind::Novice) {
    workbench.questions.AskBox(
        {.text = "File has been saved as: " + ToUpper(workbench.OutputFileName), .icon = Icon::Information});
  }
}

}  // namespace velmora
