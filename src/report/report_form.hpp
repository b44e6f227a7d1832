#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Asks what the report is to hold and where to save it, and writes it.
void ShowReportForm(Workbench& workbench);

}  // namespace velmora
