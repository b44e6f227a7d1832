#pragma once

#include <optional>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Asks what the plates of the trial are, plate by plate. Returns whether it was left with OK: the
/// definition is in force then, and NPlates set; else everything is as it was.
bool DefinePlates(Workbench& workbench);

/// The same for one plate of the database, which is not a plate of the trial. Nothing when it was cancelled.
std::optional<ForcePlate> DefineOnePlate(Workbench& workbench, const std::string& plateName);

}  // namespace velmora
