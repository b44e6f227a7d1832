#include "graph/drawn_form_graph.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmora {
namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

// All plots may stand in one frame a place when they have the same places.
bool SharePlaces(const FormGraph& graph) {
  return std::all_of(graph.plots.begin(), graph.plots.end(),
                     [&](const FormGraph::Plot& plot) { return plot.x == graph.plots.front().x; });
}

std::int64_t Count(const FormGraph::Plot& plot) {
  return static_cast<std::int64_t>(std::min(plot.x.size(), plot.y.size()));
}

float Drawn(double value, const FormGraph::Axis& axis) {
  return axis.log && !(value > 0) ? kGap : static_cast<float>(value);
}

Axis ToAxis(const FormGraph::Axis& from) {
  Axis axis;
  axis.SetMinMax(from.minimum, from.maximum);
  axis.Log = from.log;
  axis.Caption = from.caption;
  return axis;
}

}  // namespace

DrawnFormGraph::DrawnFormGraph(const FormGraph& from) {
  TakeValues(from);
  graph_.PlotXY(trial_);
  TakeLooks(from);
}

// A first and a last frame without values hold the ends of the abscissa, for a person who zooms out again.
void DrawnFormGraph::TakeValues(const FormGraph& from) {
  const bool shared = SharePlaces(from);
  std::int64_t frames = 2;
  for (const FormGraph::Plot& plot : from.plots) {
    frames = shared ? std::max(frames, Count(plot) + 2) : frames + Count(plot);
  }
  const int plots = std::min(static_cast<int>(from.plots.size()), kMaxChannels);
  trial_.AllocateData(plots, frames);
  for (std::int64_t i = 1; i <= frames; ++i) {
    std::fill_n(trial_.matrix.Frame(i), plots + 1, kGap);
  }
  double least = from.x.minimum;
  double most = from.x.maximum;
  std::int64_t at = 2;
  for (int c = 1; c <= plots; ++c) {
    const FormGraph::Plot& plot = from.plots[static_cast<std::size_t>(c - 1)];
    at = shared ? 2 : at;
    for (std::size_t k = 0; k < static_cast<std::size_t>(Count(plot)); ++k, ++at) {
      least = std::min(least, plot.x[k]);
      most = std::max(most, plot.x[k]);
      trial_.matrix.Frame(at)[0] = static_cast<float>(plot.x[k]);
      trial_.matrix.Frame(at)[c] = Drawn(plot.y[k], from.y);
    }
  }
  trial_.matrix.Frame(1)[0] = static_cast<float>(least);
  trial_.matrix.Frame(frames)[0] = static_cast<float>(most);
  trial_.Duration = most;
}

void DrawnFormGraph::TakeLooks(const FormGraph& from) {
  graph_.Abscissa = ToAxis(from.x);
  graph_.Ordinate = ToAxis(from.y);
  graph_.Title = from.title;
  graph_.TitleVisible = !from.title.empty();
  const bool named = std::any_of(from.plots.begin(), from.plots.end(),
                                 [](const FormGraph::Plot& plot) { return !plot.name.empty(); });
  graph_.SidebarVisible = named && from.plots.size() > 1;
  graph_.Track = TrackMode::PanXAndY;
  graph_.Marks = from.marks;
  graph_.Bands = from.bands;
  graph_.Points = from.points;
  graph_.Ellipses = from.ellipses;
  graph_.EqualScales = from.equalScales;
  for (Plot& plot : graph_.Plots) {
    const FormGraph::Plot& looks = from.plots[static_cast<std::size_t>(plot.Channel - 1)];
    plot.Name = looks.name;
    plot.Visible = true;
    plot.ColourIndex = looks.colour > 0 && looks.colour <= kColours ? looks.colour : kColours;
    plot.LineColor = ColourTable[static_cast<std::size_t>(plot.ColourIndex)];
    plot.LineWidth = looks.width;
    plot.Bars = looks.shape == FormGraph::Shape::Bars;
    plot.Line = looks.shape == FormGraph::Shape::Line ? LineStyle::Solid : LineStyle::None;
    plot.Point = looks.shape == FormGraph::Shape::Points ? PointStyle::Dot : PointStyle::None;
  }
  graph_.SetBackground(from.background == FormGraph::Background::White ? kWhite : kBlack);
}

}  // namespace velmora
