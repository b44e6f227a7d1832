#include "plot/axes/drawn_axes.hpp"

#include <cmath>

#include "plot/traces/pixel_scale.hpp"

namespace velmora {
namespace {

double Width(const Axis& axis) {
  return axis.Maximum - axis.Minimum;
}

void Widen(Axis& axis, double width) {
  const double more = (width - Width(axis)) / 2;
  axis.SetMinMax(axis.Minimum - more, axis.Maximum + more);
}

}  // namespace

DrawnAxes AxesOn(const Graph& graph, int width, int height) {
  DrawnAxes axes{Drawable(graph.Abscissa), Drawable(graph.Ordinate)};
  if (!graph.EqualScales || axes.abscissa.Log || axes.ordinate.Log || width <= 0 || height <= 0) {
    return axes;
  }
  const double unitsAPixel = std::max(Width(axes.abscissa) / width, Width(axes.ordinate) / height);
  if (std::isfinite(unitsAPixel)) {
    Widen(axes.abscissa, unitsAPixel * width);
    Widen(axes.ordinate, unitsAPixel * height);
  }
  return axes;
}

}  // namespace velmora
