#include "graph/graph_view.hpp"

#include <stdexcept>

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

void GraphView::SetBackground(Colour colour) {
  for (Graph& graph : graphs_) {
    graph.SetBackground(colour);
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

void GraphView::ShowRange(int graph, double left, double right, double bottom, double top) {
  GraphAt(graph).ShowRange(left, right, bottom, top);
}

void GraphView::ScaleOrdinate(Axis& ordinate, Scale scale, const std::function<void()>& autoScale) {
  switch (scale) {
    case Scale::Auto:
      autoScale();
      return;
    case Scale::TenVolts:
      ordinate.SetMinMax(-10, 10);
      return;
    case Scale::Percent:
      ordinate.SetMinMax(0, 100);
      return;
    case Scale::PlusMinusPercent:
      ordinate.SetMinMax(-100, 100);
      return;
    case Scale::IncludeZero:
      ordinate.IncludeZero();
      return;
    case Scale::PlusMinusMaximum:
      autoScale();
      ordinate.CentreOnZero();
      return;
    case Scale::NoChange:
      return;
  }
}

GraphView& OpenGraphView(Workbench& workbench) {
  return OpenAs<GraphView>(workbench, "graph");
}

}  // namespace velmora
