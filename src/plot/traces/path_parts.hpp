#pragma once

#include <QColor>
#include <vector>

#include "graph/graph.hpp"

namespace velmora {

/// Some samples of a plot that is drawn as a path, in one look; parts of one plot share the sample where they
/// meet.
struct PathPart {
  const Plot* plot = nullptr;
  SampleSpan samples;
  QColor colour;
  double width = 1.0;
};

/// All visible plots with a line, the first at the back: each by the colours of time where the graph wants
/// them, and its stronger stretch on top of it.
std::vector<PathPart> PathParts(const Graph& graph, Colour background);

}  // namespace velmora
