#include "formats/read_error.hpp"

#include "core/files/files.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

void ReportReadError(Workbench& workbench, std::string_view errorText) {
  workbench.trial.DiscardData();
  ShowFailure(workbench, {.text = "Error reading file: " + workbench.trial.FileName + "\n\"" +
                                  std::string(errorText) + "\"",
                          .icon = Icon::Exclamation});
}

bool RefuseEmptyFile(Workbench& workbench) {
  if (InputFile(workbench.trial.FileName).Size() > 0) {
    return false;
  }
  workbench.trial.DiscardData();
  ShowFailure(workbench, {.text = "File is empty.", .icon = Icon::Exclamation});
  return true;
}

}  // namespace velmora
