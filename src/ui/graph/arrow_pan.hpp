#pragma once

#include "core/open_view.hpp"
#include "graph/graph_view.hpp"

namespace velmora::ui {

/// Pans a graph (from 1) by a tenth of what it shows, with shift by all of it: across by Left and Right, and
/// where `upToo` by Up and Down as well. Returns whether the key is one of these.
bool PanByArrow(GraphView& view, int graph, const KeyPress& key, bool upToo);

}  // namespace velmora::ui
