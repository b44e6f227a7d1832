#include "export/save_data.hpp"

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
    Write(workbench, panel, format);
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
  }
}

}  // namespace velmora
