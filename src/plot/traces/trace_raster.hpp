#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "graph/graph.hpp"
#include "plot/traces/pixel_scale.hpp"
#include "plot/traces/trace_columns.hpp"

namespace velmora {

/// Pixels of 32 bits, row by row from the top; 0 is transparent.
struct PixelArea {
  std::uint32_t* first = nullptr;
  std::ptrdiff_t stride = 0;  // pixels from one row to the next
  int columns = 0;
  int rows = 0;
};

/// How the line of one plot is painted.
struct TraceLook {
  std::uint32_t colour = 0;
  int width = 1;  // pixels
  LineStyle line = LineStyle::Solid;
};

/// Paints the lines of all plots, the last on top, each pixel once: 64 channels that fill one axis cost
/// little more than one. `looks` has one look a plot of `columns`. A dashed line shows its gaps only
/// where it is flat, so that no peak falls into one; `dashOrigin` is the column where its dashes begin.
void PaintColumns(const TraceColumns& columns, const std::vector<TraceLook>& looks, int dashOrigin,
                  const PixelArea& area);

/// Lengths of dash and gap in turn, in units of the line's dashes; empty for solid and none.
std::vector<int> DashLengths(LineStyle style);

}  // namespace velmora
