#pragma once

#include "core/open_view.hpp"
#include "run/report/json_text.hpp"

namespace velmora {

/// What is drawn in the view that is open. Colours of plots are indices of the colour table, those of
/// cursors have red in the low byte; cursors show in their order, which need not be that of time.
Json ViewInfo(const OpenView& view);

}  // namespace velmora
