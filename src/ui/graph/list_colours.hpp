#pragma once

#include <QString>

#include "graph/colours.hpp"

namespace velmora::ui {

/// The style of a list beside a graph: the ground of the graph, which the channels' colours were chosen
/// for, heads that set themselves off from it, the selection in blue.
QString ListStyle(Colour background);

}  // namespace velmora::ui
