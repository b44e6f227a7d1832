#pragma once

#include <qcustomplot.h>

#include "graph/graph.hpp"

namespace velmora {

/// What axes take from the plot that they are in.
struct AxisLook {
  QFont font;
  Colour background = kBlack;
};

/// Range, ticks, numerals, caption and grid of an axis as the graph has them; about so many numerals, of
/// which three are the fewest.
void ArrangeAxis(QCPAxis& axis, const Axis& from, const AxisLook& look, int numerals);

}  // namespace velmora
