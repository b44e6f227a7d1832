#include "import/read_errors.hpp"

#include "core/helpers.hpp"

namespace velmora {

void ShowReadError(Workbench& workbench, const FileError& error) {
  workbench.trial.DiscardData();
  ShowFailure(workbench,
              {.text = "Error reading file: " + workbench.trial.FileName + "\n\"" + error.what() + "\"",
               .icon = Icon::Exclamation});
}

}  // namespace velmora
