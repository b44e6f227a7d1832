#pragma once

#include "core/workbench.hpp"

namespace velmora {

enum class PlateEditMode { Show, Edit };

/// Shows the plates of the trial, or lets them be edited; says why when the trial has none. Edits count
/// when the form is left with OK.
void ShowForcePlates(Workbench& workbench, PlateEditMode mode);

/// Asks where plate 2 lies, in mm and degrees, starting from what `workbench.plates` says, and keeps the
/// answer there. Returns false, with nothing kept, when it was cancelled.
bool AskPlateSpacing(Workbench& workbench);

/// Collects the three angles of a rotation.
void AskRotation(Workbench& workbench);

}  // namespace velmora
