#include "ui/graph/arrow_pan.hpp"

namespace velmora::ui {

bool PanByArrow(GraphView& view, int graph, const KeyPress& key, bool upToo) {
  constexpr double kPart = 0.1;
  const bool across = key.name == "Left" || key.name == "Right";
  const bool up = upToo && (key.name == "Up" || key.name == "Down");
  if (!across && !up) {
    return false;
  }
  const Axis& x = view.GraphAt(graph).Abscissa;
  const Axis& y = view.GraphAt(graph).Ordinate;
  const double step = (key.name == "Left" || key.name == "Down" ? -1 : 1) * (key.shift ? 1.0 : kPart);
  const double dx = across ? step * (x.Maximum - x.Minimum) : 0;
  const double dy = up ? step * (y.Maximum - y.Minimum) : 0;
  view.ShowRange(graph, x.Minimum + dx, x.Maximum + dx, y.Minimum + dy, y.Maximum + dy);
  return true;
}

}  // namespace velmora::ui
