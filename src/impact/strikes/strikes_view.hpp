#pragma once

#include "core/workbench.hpp"
#include "impact/strikes/strikes_form.hpp"

namespace velmora {

/// The impacts that the dialogue found, as a table and drawn on one channel after the other.
void ShowStrikes(Workbench& workbench, const StrikesForm& form);

}  // namespace velmora
