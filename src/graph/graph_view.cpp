#include "graph/graph_view.hpp"

#include <stdexcept>

#include "core/trial/abscissa.hpp"
#include "graph/threshold_lines.hpp"

namespace velmora {

GraphView::GraphView(Workbench& workbench) : workbench_(workbench), graphs_(1) {
  maximised_ = workbench.graph.GraphWindowMaximized;
}

Graph& GraphView::GraphAt(int graph) {
  if (graph < 1 || graph > NGraphs()) {
    throw std::out_of_range("there is no graph " + std::to_string(graph) + ", but " +
                            std::to_string(NGraphs()));
  }
  return graphs_[static_cast<std::size_t>(graph - 1)];
}

const Graph& GraphView::GraphAt(int graph) const {
  return const_cast<GraphView*>(this)->GraphAt(graph);  // NOLINT: the same refusal, once
}

void GraphView::Leave() {
  workbench_.graph.GraphWindowMaximized = maximised_;
}

void GraphView::ThresholdsChanged() {
  if (ThresholdsShown(*this)) {
    ShowThresholdLines(*this, workbench_.thresholds);
  }
}

std::vector<int> GraphView::ThresholdChannels(int graph) const {
  std::vector<int> channels;
  for (const Plot& plot : GraphAt(graph).Plots) {
    if (plot.Visible) {
      channels.push_back(plot.Channel);
    }
  }
  return channels;
}

void GraphView::ClearLooks(Graph& graph) {
  const Axis looks;
  for (Axis* axis : {&graph.Abscissa, &graph.Ordinate}) {
    const Axis range = *axis;
    *axis = looks;
    axis->SetMinMax(range.Minimum, range.Maximum);
    axis->Caption = range.Caption;
  }
  graph.TitleVisible = true;
  graph.SidebarVisible = true;
  graph.Track = TrackMode::None;
  for (Plot& plot : graph.Plots) {
    plot.Line = LineStyle::Solid;
    plot.LineWidth = 1.0;
    plot.Point = PointStyle::None;
  }
}

void GraphView::ShowChannels(Graph& graph, const ChannelFlags& channels) {
  graph.Show(channels);
  KeepColours();
}

void GraphView::SetBackground(Colour colour) {
  for (Graph& graph : graphs_) {
    graph.SetBackground(colour);
  }
  KeepColours();
}

// A channel that turned white is that everywhere.
void GraphView::KeepColours() {
  for (const Graph& graph : graphs_) {
    for (const Plot& plot : graph.Plots) {
      std::int16_t& colour = workbench_.trial.ChanColour[plot.Channel];
      if (plot.Visible && plot.ColourIndex == kColours) {
        colour = kColours;
      }
    }
  }
}

void GraphView::SetTrack(TrackMode mode) {
  for (Graph& graph : graphs_) {
    graph.Track = mode;
  }
}

void GraphView::TakeStyles() {
  for (Graph& graph : graphs_) {
    graph.Abscissa.Log = Lead().Abscissa.Log;
    graph.SidebarVisible = Lead().SidebarVisible;
  }
  SetBackground(Lead().Background);
}

void GraphView::CaptionAbscissa() {
  const std::string caption = LabelWithUnits(workbench_.trial.ChanLabel[0].Text(), AbscissaUnits(workbench_));
  for (Graph& graph : graphs_) {
    graph.Abscissa.Clock = workbench_.time.Base == TimeBase::HhMmSs;
    graph.Abscissa.Caption = caption;
  }
}

GraphView& OpenGraphView(Workbench& workbench) {
  auto* view = dynamic_cast<GraphView*>(workbench.view.get());
  if (view == nullptr) {
    throw std::runtime_error("no graph is open");
  }
  return *view;
}

}  // namespace velmora
