#pragma once

#include <QPolygonF>
#include <QRectF>
#include <vector>

#include "graph/graph.hpp"
#include "plot/traces/pixel_scale.hpp"
#include "plot/traces/trace_columns.hpp"

namespace velmora {

/// The samples of a graph that a drawing of its abscissa needs: those in it, and one on either side.
/// All of them when the times are not in order.
SampleSpan ShownSamples(const Graph& graph, const Axis& abscissa);

/// One plot as lines through its samples, in pixels, cut at the edges of the area and where a sample is
/// no number.
std::vector<QPolygonF> SampleLines(const Graph& graph, int channel, const SampleSpan& samples,
                                   const PixelScale& x, const PixelScale& y);

/// One plot as lines up and down its columns, in pixels of the columns.
std::vector<QPolygonF> ColumnLines(const TraceColumns& columns, int plot, int rows);

}  // namespace velmora
