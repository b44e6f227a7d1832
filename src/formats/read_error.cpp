#include "formats/read_error.hpp"

#include "core/trial/helpers.hpp"

namespace velmora {

void ReportReadError(Workbench& workbench, std::string_view errorText) {
  workbench.trial.DiscardData();
  ShowFailure(workbench, {.text = "Error reading file: " + workbench.trial.FileName + "\n\"" +
                                  std::string(errorText) + "\"",
                          .icon = Icon::Exclamation});
}

}  // namespace velmora
