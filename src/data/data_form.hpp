#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The numbers of the trial as a table, of which one cell at a time is given another value. The window has a
/// grid in its place, which changes its cells by this form's fields.
void ShowDataForm(Workbench& workbench);

}  // namespace velmora
