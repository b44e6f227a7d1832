#include "ensemble/ensemble_commands.hpp"

#include <array>
#include <memory>

#include "core/trial/helpers.hpp"
#include "ensemble/ensemble_form.hpp"

namespace velmora {
namespace {

// While a graph has the form's place the command brings the form back.
void Average(Workbench& workbench) {
  if (workbench.AfterView) {
    CloseView(workbench);
    Request(workbench, ShellRequest::HideGraph);
    std::exchange(workbench.AfterView, nullptr)();
    return;
  }
  std::make_shared<EnsembleForm>(workbench)->Run();
}

constexpr std::array kEnsembleCommands = {
    Command{"ensemble.average", "&Ensemble averaging", "&Analysis", Needs::Nothing, Average},
};

}  // namespace

std::span<const Command> EnsembleCommands() {
  return kEnsembleCommands;
}

}  // namespace velmora
