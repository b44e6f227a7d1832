#include "import/import_commands.hpp"

#include <array>

#include "core/workbench.hpp"
#include "import/load_file.hpp"
#include "import/units_file.hpp"

namespace velmora {
namespace {

// The path is set before the command runs: by the browser, by the command line, or by a recipe.
void LoadCommand(Workbench& workbench) {
  LoadFile(workbench);
  if (workbench.trial.NData < 1) {
    workbench.report.failures.push_back("no trial was loaded from " + workbench.trial.FileName);
  }
}

constexpr std::array kCommands = {
    Command{"file.load", "&Load selected file", "&File", Needs::Nothing, LoadCommand},
    Command{"file.read-units", "Read Sa&ved units, labels && factors", "&File", Needs::Data, ReadUnitsFile},
};

}  // namespace

std::span<const Command> ImportCommands() {
  return kCommands;
}

}  // namespace velmora
