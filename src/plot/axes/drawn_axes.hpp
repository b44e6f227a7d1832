#pragma once

#include "graph/graph.hpp"

namespace velmora {

struct DrawnAxes {
  Axis abscissa;
  Axis ordinate;
};

/// The axes of a graph with the ranges that they have on so many pixels: never empty, and above zero where
/// they are logarithmic. With equal scales a unit is as long up as it is across: what the graph wants to
/// show is in the middle, and the axis that has room to spare shows more. A logarithm knows no equal
/// scales.
DrawnAxes AxesOn(const Graph& graph, int width, int height);

}  // namespace velmora
