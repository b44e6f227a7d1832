#pragma once

#include <optional>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Asks for a database of plates, reads it and lets one of its plates be chosen.
std::optional<ForcePlate> LoadPlate(Workbench& workbench);

/// Asks for a name, then for the database, and puts the plate there under that name. Returns the name as
/// the record keeps it; nothing when the plate was not saved.
std::optional<std::string> SavePlate(Workbench& workbench, ForcePlate plate);

}  // namespace velmora
