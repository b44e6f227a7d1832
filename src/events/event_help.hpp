#pragma once

#include "core/workbench.hpp"

namespace velmora {

// What the help menus of the graphs tell.
void ShowThresholdHelp(Workbench& workbench);
void ShowEventHelp(Workbench& workbench);
void ShowOnsetHelp(Workbench& workbench);

/// The menu's "Chan&ge a threshold": how it is done.
void ShowHowToChangeThreshold(Workbench& workbench);

}  // namespace velmora
