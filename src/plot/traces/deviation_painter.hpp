#pragma once

#include <QPainter>
#include <QRect>

#include "graph/graph.hpp"

namespace velmora {

/// The bands of standard deviations of a graph, each as one translucent area with an outline of one pixel in
/// the colour of its mean.
void PaintDeviations(QPainter& painter, const Graph& graph, const QRect& rect, Colour background);

}  // namespace velmora
