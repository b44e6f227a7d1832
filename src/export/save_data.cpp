#include "export/save_data.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include "core/files/files.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "export/save_list.hpp"
#include "formats/unpublished_format.hpp"

namespace velmora {
namespace {

// "Comma Separated Variable (.CSV)"
std::string NameOf(const SaveEntry& entry) {
  return WithoutMnemonic(entry.caption);
}

/// However a save ends, an exception included, the window lists the files that there are now, from where it
/// was before: a save dialogue may have moved to where the file went.
class Epilogue {
 public:
  explicit Epilogue(Workbench& workbench) : workbench_(workbench) {}
  Epilogue(const Epilogue&) = delete;
  Epilogue& operator=(const Epilogue&) = delete;
  ~Epilogue() {
    try {
      std::error_code error;
      std::filesystem::current_path(workbench_.DataDir, error);
      Request(workbench_, ShellRequest::ShowFiles);
    } catch (...) {  // NOLINT: lists that cannot be filled must not end the program
    }
  }

 private:
  Workbench& workbench_;
};

void Write(Workbench& workbench, ProgressPanel& panel, SaveFormat format) {
  const auto row = static_cast<std::size_t>(format);
  if (row >= kSaveList.size()) {
    ShowRefusal(workbench, {.text = " This filetype is not supported.", .icon = Icon::Exclamation});
    return;
  }
  const SaveEntry& entry = kSaveList[row];
  if (entry.refuses != nullptr && entry.refuses(workbench)) {
    return;
  }
  if (entry.write == nullptr) {
    ShowFailure(workbench,
                {.title = "File Format Not Supported",
                 .text = UnpublishedFormatText("\"" + NameOf(entry) + "\" files", "written", {},
                                               "Save the trial as Velmora2 Binary (.VMB), tab-delimited text "
                                               "(.TAB) or C3D (.C3D) instead."),
                 .icon = Icon::Exclamation});
    return;
  }
  entry.write(workbench, panel);
}

// The matrix of a calibrated plate stays behind, and without it nobody can reduce its channels.
void TellLostMatrices(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const bool calibrated = std::any_of(
      trial.FilePlates.begin(), trial.FilePlates.end(),
      [](const FilePlate& plate) { return plate.record.has_value() && !plate.record->matrix.empty(); });
  if (calibrated && !trial.ForcesReduced) {
    AddNotice(workbench,
              "The saved file lacks the calibration matrices of the force plates: reduce them first, or keep "
              "the original or a C3D file.");
  }
}

// Counting and percentages change the rate; of the files that name one, only the binary file keeps percent.
void TellRateOfAbscissa(Workbench& workbench, SaveFormat format) {
  constexpr std::array named = {SaveFormat::NativeAscii, SaveFormat::BioWare, SaveFormat::NativeBinary,
                                SaveFormat::C3d, SaveFormat::Visual3d};
  const TimeBase base = workbench.time.Base;
  const bool told =
      base == TimeBase::Count || (base == TimeBase::Percentage && format != SaveFormat::NativeBinary);
  if (told && std::find(named.begin(), named.end(), format) != named.end()) {
    AddNotice(workbench, "The rate in the saved file is " + PlainNumber(workbench.trial.Rate) +
                             ", samples per unit of the abscissa, which will be read as Hz.  Choose Seconds "
                             "as the time base before saving to keep the rate in Hz.");
  }
}

// Files without times of their own are read back at the rate. A trial whose times jitter or leave gaps would
// come back as another one.
void TellLostTimes(Workbench& workbench, SaveFormat format) {
  constexpr std::array withoutTimes = {SaveFormat::NativeAscii, SaveFormat::BioWare, SaveFormat::C3d,
                                       SaveFormat::Visual3d};
  const Trial& trial = workbench.trial;
  if (std::find(withoutTimes.begin(), withoutTimes.end(), format) == withoutTimes.end() ||
      !(trial.Rate > 0) || !IsTimeBased(workbench)) {
    return;
  }
  double most = 0.0;
  for (std::int32_t i = 2; i <= trial.NData; ++i) {
    const double time = double{trial.Data(i, 0)} - double{trial.Data(1, 0)};
    most = std::max(most, std::abs(time - (i - 1) / trial.Rate));
  }
  // Besides a sample, which times of few digits are off by, what 32 bits leave of a time.
  const double rounding =
      std::abs(double{trial.Data(trial.NData, 0)}) * 2 * std::numeric_limits<float>::epsilon();
  if (most > 1 / trial.Rate + rounding) {
    AddNotice(workbench,
              "The saved file counts its times at the rate; those of the trial differ from that by up to " +
                  PlainNumber(static_cast<float>(most)) + " s. .VMB, .CSV and .TAB files keep them.");
  }
}

// Of samples that are no numbers (a sensor that dropped out) the binary file alone gives back what they are.
void TellMissingSamples(Workbench& workbench, SaveFormat format) {
  const Trial& trial = workbench.trial;
  const bool range = format == SaveFormat::NativeAscii;
  const std::int32_t last = range ? std::min(trial.CursorHi, trial.NData) : trial.NData;
  std::int64_t missing = 0;
  for (std::int32_t i = range ? std::max(trial.CursorLo, 1) : 1; i <= last; ++i) {
    const float* frame = trial.matrix.Frame(i);
    missing += std::count_if(frame + 1, frame + trial.NChan + 1, [](float x) { return !std::isfinite(x); });
  }
  if (missing > 0) {
    AddNotice(workbench, CountOf(missing, "sample") + " without a number" +
                             (format == SaveFormat::C3d ? ": this program does not read such a C3D file back."
                                                        : ", which the saved file does not give back.") +
                             " A .VMB file keeps them.");
  }
}

// The files that hold samples are what a plate is reduced from.
bool HoldsSamples(SaveFormat format) {
  return format != SaveFormat::BiasValues && format != SaveFormat::UnitsFile;
}

}  // namespace

void SaveData(Workbench& workbench, SaveFormat format) {
  const Trial& trial = workbench.trial;
  if (trial.NData == 0) {
    return;
  }
  ProgressPanel panel(workbench);
  const Epilogue epilogue(workbench);
  panel.SetStatus("Saving data (n= " + std::to_string(trial.NData) + ")");
  panel.SetLimits(0, trial.NData);
  try {
    const std::size_t deeds = workbench.report.deeds.size();
    Write(workbench, panel, format);
    if (workbench.report.deeds.size() > deeds) {
      if (format != SaveFormat::C3d && HoldsSamples(format)) {
        TellLostMatrices(workbench);
      }
      TellRateOfAbscissa(workbench, format);
      TellLostTimes(workbench, format);
      if (HoldsSamples(format) && format != SaveFormat::NativeBinary) {
        TellMissingSamples(workbench, format);
      }
    }
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
  }
}

}  // namespace velmora
