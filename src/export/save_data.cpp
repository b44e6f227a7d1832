#include "export/save_data.hpp"

#include <algorithm>
#include <filesystem>
#include <string>

#include "core/files/files.hpp"
#include "core/questions/progress.hpp"
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
    if (workbench.report.deeds.size() > deeds && format != SaveFormat::C3d) {
      TellLostMatrices(workbench);
    }
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
  }
}

}  // namespace velmora
