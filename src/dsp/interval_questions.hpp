#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Whether two cursors mark an interval. Without them asks whether the whole trial is meant, and then
/// sets them so; No has the graph opened after the command, for the cursors to be set there.
bool HasInterval(Workbench& workbench);

/// The last question before data are replaced.
bool ConfirmReplacement(Workbench& workbench, const char* title);

}  // namespace velmora
