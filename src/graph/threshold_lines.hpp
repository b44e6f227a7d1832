#pragma once

#include "graph/time_view.hpp"

namespace velmora {

// Level lines at the thresholds of a view's channels. They stand in the graphs' lists of cursors, behind
// those of a person.

[[nodiscard]] bool ThresholdsShown(const TimeView& view);

/// Draws the lines anew at the thresholds as they are: one for each channel that the view has a line for.
void ShowThresholdLines(TimeView& view, const ThresholdMemory& thresholds);

/// "Add/remove thres&holds".
void ToggleThresholdLines(TimeView& view, const ThresholdMemory& thresholds);

/// The line of a graph (from 1); nullptr when it has none.
GraphCursor* ThresholdLineOf(Graph& graph);

}  // namespace velmora
