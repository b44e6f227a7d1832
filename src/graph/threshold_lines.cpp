#include "graph/threshold_lines.hpp"

#include <algorithm>

#include "core/text/text.hpp"

namespace velmora {
namespace {

bool IsThresholdLine(const GraphCursor& cursor) {
  return cursor.Kind == CursorKind::Threshold;
}

}  // namespace

bool ThresholdsShown(const TimeView& view) {
  const auto graphs = view.Graphs();
  return std::any_of(graphs.begin(), graphs.end(), [](const Graph& graph) {
    return std::any_of(graph.Cursors.begin(), graph.Cursors.end(), IsThresholdLine);
  });
}

void ShowThresholdLines(TimeView& view, const ThresholdMemory& thresholds) {
  constexpr Colour kOrange = 0x80C0FF;
  const int cursors = view.Cursors();
  for (int g = 1; g <= view.NGraphs(); ++g) {
    std::vector<GraphCursor>& list = view.GraphAt(g).Cursors;
    std::erase_if(list, IsThresholdLine);
    const std::vector<int> channels = view.ThresholdChannels(g);
    auto place = list.begin() + std::min(cursors, static_cast<int>(list.size()));
    for (const int channel : channels) {
      GraphCursor line;
      line.YPosition = thresholds.ChanThreshold[channel];
      line.Color = kOrange;
      line.Crosshair = CrosshairStyle::Horizontal;
      line.Kind = CursorKind::Threshold;
      line.NameVisible = channels.size() > 1;  // else there is no doubt whose it is
      line.Name =
          line.NameVisible ? Trim(view.GraphAt(g).Plots[static_cast<std::size_t>(channel - 1)].Name) : "";
      place = list.insert(place, line) + 1;
    }
  }
}

void ToggleThresholdLines(TimeView& view, const ThresholdMemory& thresholds) {
  if (!ThresholdsShown(view)) {
    ShowThresholdLines(view, thresholds);
    return;
  }
  for (Graph& graph : view.Graphs()) {
    std::erase_if(graph.Cursors, IsThresholdLine);
  }
}

GraphCursor* ThresholdLineOf(Graph& graph) {
  const auto line = std::find_if(graph.Cursors.begin(), graph.Cursors.end(), IsThresholdLine);
  return line == graph.Cursors.end() ? nullptr : &*line;
}

}  // namespace velmora
