#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Shows the path of the centre of pressure between the cursors over the outlines of the plates, from
/// above, loaded samples only; says why when the forces are not reduced.
void ShowPressurePath(Workbench& workbench);

}  // namespace velmora
