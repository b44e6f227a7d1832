#include "export/save_data.hpp"

#include "core/files.hpp"
#include "core/helpers.hpp"
#include "core/numbers.hpp"
#include "core/progress.hpp"
#include "export/native_binary_writer.hpp"

namespace velmora {
namespace {

void Write(Workbench& workbench, ProgressPanel& panel, SaveFormat format) {
  if (format == SaveFormat::NativeBinary) {
    WriteNativeBinary(workbench, panel);
    return;
  }
  ShowRefusal(workbench, {.text = " This filetype is not supported.", .icon = Icon::Exclamation});
}

}  // namespace

void SaveData(Workbench& workbench, SaveFormat format) {
  const Trial& trial = workbench.trial;
  if (trial.NData == 0) {
    return;
  }
  ProgressPanel panel(workbench);
  panel.SetStatus("Saving data (n= " + FormatNumber(trial.NData, "0") + ")");
  panel.SetLimits(0, trial.NData);
  try {
    Write(workbench, panel, format);
  } catch (const FileError& error) {
    ShowFailure(workbench, {.text = "Error saving to file: " + workbench.OutputFileName +
                                    "\nFile may be in-use or write-protected.\n\n\"" + error.what() + "\"",
                            .icon = Icon::Exclamation});
  }
}

}  // namespace velmora
