#pragma once

#include "graph/multi/multi_view.hpp"

namespace velmora {

/// Marks the first burst of every graph's channel between cursors 1 and 2, in place of the marks of the scan
/// before. Nothing without two cursors or without thresholds.
void FindOnsets(Workbench& workbench, MultiView& view);

/// The marks go; CursorLo and CursorHi become the whole trial.
void RemoveOnsets(Workbench& workbench, MultiView& view);

[[nodiscard]] bool OnsetsShown(const MultiView& view);

/// Places of a graph's onset and offset on the abscissa.
struct OnsetMarks {
  double onset = 0.0;
  double offset = 0.0;
};
[[nodiscard]] std::optional<OnsetMarks> OnsetMarksOf(const Graph& graph);

}  // namespace velmora
