#pragma once

#include "core/workbench.hpp"
#include "emg/bursts/onsets_form.hpp"

namespace velmora {

/// The bursts that the dialogue found, as tables and drawn on the EMG of one channel after the other.
void ShowOnsets(Workbench& workbench, const OnsetsForm& form);

}  // namespace velmora
