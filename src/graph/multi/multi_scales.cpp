#include <algorithm>
#include <cmath>

#include "graph/multi/deviations.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {
namespace {

void Widen(Axis& axis) {
  if (axis.Minimum == axis.Maximum) {
    axis.SetMinMax(axis.Minimum - 1, axis.Maximum + 1);
  }
}

}  // namespace

// The search for the largest value starts from a number, and so ends with it when all samples lie below.
void MultiView::AutoScale(Graph& graph) const {
  constexpr float kLargestFrom = -999999.0F;
  Extremes all;
  if (graph.Deviations.empty()) {
    for (const Plot& plot : graph.Plots) {
      if (plot.Visible) {
        const Extremes own = graph.Envelope().Whole(plot.Channel);
        all.min = std::min(all.min, own.min);
        all.max = std::max(all.max, own.max);
      }
    }
  } else {
    all = ExtremesOf(graph.Deviations);
  }
  if (all.Empty() || !std::isfinite(all.min) || !std::isfinite(all.max)) {
    return;
  }
  graph.Ordinate.SetMinMax(all.min, std::max(all.max, kLargestFrom));
  Widen(graph.Ordinate);
}

void MultiView::ScaleAnew() {
  for (Graph& graph : graphs_) {
    AutoScale(graph);
  }
  if (scale_ == MultiScale::Same) {
    SetSameScale();
  } else if (scale_ != MultiScale::MinMax) {
    SetScale(static_cast<Scale>(scale_));
  }
}

void MultiView::SetScale(Scale scale) {
  scale_ = static_cast<MultiScale>(scale);
  for (Graph& graph : graphs_) {
    Axis& axis = graph.Ordinate;
    switch (scale) {
      case Scale::Auto:
        AutoScale(graph);
        break;
      case Scale::TenVolts:
        axis.SetMinMax(-10, 10);
        break;
      case Scale::Percent:
        axis.SetMinMax(0, 100);
        break;
      case Scale::PlusMinusPercent:
        axis.SetMinMax(-100, 100);
        break;
      case Scale::IncludeZero:
        axis.IncludeZero();
        break;
      case Scale::PlusMinusMaximum:
        AutoScale(graph);
        axis.CentreOnZero();
        Widen(axis);
        break;
      case Scale::NoChange:
        break;
    }
  }
}

void MultiView::SetSameScale() {
  scale_ = MultiScale::Same;
  auto lowest = static_cast<float>(Lead().Ordinate.Minimum);
  auto highest = static_cast<float>(Lead().Ordinate.Maximum);
  for (const int graph : ShownGraphs()) {
    lowest = std::min(lowest, static_cast<float>(GraphAt(graph).Ordinate.Minimum));
    highest = std::max(highest, static_cast<float>(GraphAt(graph).Ordinate.Maximum));
  }
  for (Graph& graph : graphs_) {
    graph.Ordinate.SetMinMax(lowest, highest);
    Widen(graph.Ordinate);
  }
}

}  // namespace velmora
