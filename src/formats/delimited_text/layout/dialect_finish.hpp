#pragma once

#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// What some dialects do with the trial once its numbers are read: bioPlux counts become millivolts,
/// Formula1 drops raw data and names its forces, frame counters go
/// unless the person has chosen the columns to leave out.
void FinishDialect(Workbench& workbench, const TextHeader& header, const ParseSettings& settings);

}  // namespace velmora
