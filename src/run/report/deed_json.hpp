#pragma once

#include "core/command_report.hpp"
#include "run/report/json_text.hpp"

namespace velmora {

/// {"what", "channels": [...], "refused": [{"channel", "why"}]}
Json DeedJson(const Deed& deed);

}  // namespace velmora
