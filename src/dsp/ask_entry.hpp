#pragma once

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// A click in a per-channel list of numbers of a form: asks for the channel's new value, offering the
/// present one, and edits the field. An empty reply changes nothing.
void AskEntry(Workbench& workbench, Form& form, const char* field, int channel, const char* title,
              const char* prompt);

}  // namespace velmora
