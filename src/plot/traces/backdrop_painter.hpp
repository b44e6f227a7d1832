#pragma once

#include <QPainter>
#include <QRect>

#include "graph/graph.hpp"

namespace velmora {

/// The lines behind the traces of a graph, in the colours of their channels.
void PaintBackdrops(QPainter& painter, const Graph& graph, const QRect& rect, Colour background);

}  // namespace velmora
