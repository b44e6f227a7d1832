#pragma once

#include <span>

#include "graph/graph.hpp"
#include "plot/traces/trace_raster.hpp"

namespace velmora {

/// Some samples of a channel as the corners of a line, in one look.
struct PathStretch {
  int channel = 1;
  SampleSpan samples;
  TraceLook look;
};

/// Paints the lines between neighbouring samples, whatever the order of their times, the last stretch on top
/// and in it the last sample: every pixel that a line touches has its colour. Lines are solid. What is hidden
/// and what lies outside costs next to nothing, so that a million samples take the time of a frame. The
/// picture is cut into `strips` of columns that are painted at the same time; 0: as many as the cores make
/// worth it.
void PaintPaths(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                const PixelScale& y, const PixelArea& area, std::size_t strips = 0);

/// The same pixels line by line from the back: what the other is held against.
void PaintPathsPlainly(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                       const PixelScale& y, const PixelArea& area);

}  // namespace velmora
