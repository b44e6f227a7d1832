#pragma once

#include <span>

#include "core/command_report.hpp"
#include "core/workbench.hpp"
#include "run/report/json_text.hpp"

namespace velmora {

/// What InfoText (info.hpp) writes, as an object.
Json InfoJson(const Workbench& workbench, std::span<const Deed> done);

}  // namespace velmora
