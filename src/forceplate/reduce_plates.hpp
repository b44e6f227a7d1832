#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The vertical force below which all forces are zeroed, in newtons; 0 when the question was cancelled.
float AskMinimumForce(Workbench& workbench);

/// Reduces the raw channels of the plates to forces, in place: by the file's header, or by what the
/// definition view says. Asks what it needs and says what it cannot do.
void ReduceForcePlates(Workbench& workbench);

/// Why the entry is greyed although there are data; nullptr when it is not.
const char* WhyNotReduced(const Workbench& workbench);

}  // namespace velmora
