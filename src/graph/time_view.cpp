#include "graph/time_view.hpp"

#include <stdexcept>

#include "graph/threshold_lines.hpp"

namespace velmora {

void TimeView::ThresholdsChanged() {
  if (ThresholdsShown(*this)) {
    ShowThresholdLines(*this, workbench_.thresholds);
  }
}

std::vector<int> TimeView::ThresholdChannels(int graph) const {
  std::vector<int> channels;
  for (const Plot& plot : GraphAt(graph).Plots) {
    if (plot.Visible) {
      channels.push_back(plot.Channel);
    }
  }
  return channels;
}

void TimeView::ShowChannels(Graph& graph, const ChannelFlags& channels) {
  graph.Show(channels);
  KeepColours();
}

void TimeView::SetBackground(Colour colour) {
  GraphView::SetBackground(colour);
  KeepColours();
}

// A channel that turned white is that everywhere.
void TimeView::KeepColours() {
  for (const Graph& graph : graphs_) {
    for (const Plot& plot : graph.Plots) {
      std::int16_t& colour = workbench_.trial.ChanColour[plot.Channel];
      if (plot.Visible && plot.ColourIndex == kColours) {
        colour = kColours;
      }
    }
  }
}

void TimeView::LeaveMode() {
  SetTrack(Cursors() > 0 ? TrackMode::DragCursors : TrackMode::None);
}

void TimeView::CaptionAbscissa() {
  const std::string caption = LabelWithUnits(workbench_.trial.ChanLabel[0].Text(), AbscissaUnits(workbench_));
  for (Graph& graph : graphs_) {
    graph.Abscissa.Clock = workbench_.time.Base == TimeBase::HhMmSs;
    graph.Abscissa.Caption = caption;
  }
}

TimeView& OpenTimeView(Workbench& workbench) {
  auto* view = dynamic_cast<TimeView*>(&OpenGraphView(workbench));
  if (view == nullptr) {
    throw std::runtime_error("the graph that is open has no cursors");
  }
  return *view;
}

const TimeView* FindTimeView(const Workbench& workbench) {
  return dynamic_cast<const TimeView*>(workbench.view.get());
}

}  // namespace velmora
