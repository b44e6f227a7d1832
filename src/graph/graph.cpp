#include "graph/graph.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"

namespace velmora {

std::string_view KindName(CursorKind kind) {
  switch (kind) {
    case CursorKind::Cursor:
      return "cursor";
    case CursorKind::Threshold:
      return "threshold";
    case CursorKind::Onset:
      return "onset";
    case CursorKind::Offset:
      return "offset";
    case CursorKind::Value:
      return "value";
  }
  return "";
}

std::string LabelWithUnits(std::string_view label, std::string_view units) {
  const std::string name = Trim(label);
  const std::string unit = Trim(units);
  return unit.empty() ? name : name + " (" + unit + ")";
}

namespace {

// Within the last of a time's 32 bits.
bool IsNearly(float time, double exact) {
  const auto nearest = static_cast<float>(exact);
  return std::nextafter(nearest, time) == time;
}

}  // namespace

void Axis::SetMinMax(double minimum, double maximum) {
  Minimum = minimum;
  Maximum = maximum;
}

void Axis::IncludeZero() {
  if (Minimum > 0) {
    Minimum = 0;
  } else if (Maximum < 0) {
    Maximum = 0;
  }
}

void Axis::CentreOnZero() {
  const double most = std::max(std::abs(Minimum), std::abs(Maximum));
  SetMinMax(-most, most);
}

void Graph::PlotXY(const Trial& trial) {
  trial_ = &trial;
  if (plotted_.use_count() > 1) {  // others may show it until they are plotted again
    plotted_ = std::make_shared<PlottedSamples>();
  }
  plotted_->columns.reset();
  plotted_->envelope.Build(trial.matrix);
  plotted_->times.Take(trial);
  TakePlots();
}

void Graph::PlotAs(const Graph& other) {
  trial_ = other.trial_;
  plotted_ = other.plotted_;
  TakePlots();
}

const ColumnExtremes& Graph::Columns(const std::vector<SampleSpan>& spans) const {
  if (!plotted_->columns || plotted_->asked != spans) {
    plotted_->columns = plotted_->envelope.Columns(std::span(spans));
    plotted_->asked = spans;
  }
  return *plotted_->columns;
}

void Graph::TakePlots() {
  Plots.resize(static_cast<std::size_t>(trial_->NChan));
  for (int c = 1; c <= trial_->NChan; ++c) {
    Plot& plot = Plots[static_cast<std::size_t>(c - 1)];
    plot.Channel = c;
    plot.Name = trial_->ChanLabel[c];
  }
}

void Graph::Show(const ChannelFlags& selected) {
  for (Plot& plot : Plots) {
    plot.Visible = selected[plot.Channel];
    plot.ColourIndex = std::clamp<int>(trial_->ChanColour[plot.Channel], 0, kColours);
    plot.LineColor = ColourTable[static_cast<std::size_t>(plot.ColourIndex)];
  }
  SetBackground(Background);
}

// Yellow is lost on white and black on black.
void Graph::SetBackground(Colour colour) {
  Background = colour;
  Abscissa.GridColor = kGridGrey;
  Ordinate.GridColor = kGridGrey;
  if (!Cursors.empty()) {
    Cursors.front().Color = colour == kWhite ? kBlue : kYellow;
  }
  for (Plot& plot : Plots) {
    if (colour == kBlack && plot.Visible && plot.ColourIndex == 0) {
      plot.ColourIndex = kColours;
      plot.LineColor = ColourTable[kColours];
    }
  }
}

void Graph::AutoScaleAbscissa() {
  if (trial_ == nullptr || trial_->NData == 0) {
    return;
  }
  const Extremes times = Envelope().Whole(0);
  if (times.Empty() || !std::isfinite(times.min) || !std::isfinite(times.max)) {
    return;
  }
  const double end = AbscissaEnd(*trial_);
  double last = IsNearly(times.max, end) ? end : static_cast<double>(times.max);
  const double first = times.min;
  if (last <= first) {  // a single sample
    last = first + 1.0;
  }
  Abscissa.SetMinMax(first, last);
}

void Graph::AutoScaleOrdinate() {
  if (trial_ == nullptr || trial_->NData == 0) {
    return;
  }
  Extremes all;
  const ColumnExtremes whole = Envelope().Columns(1, trial_->NData, 1);
  for (const Plot& plot : Plots) {
    if (plot.Visible) {
      const Extremes own = whole.At(0, plot.Channel);
      all.min = std::min(all.min, own.min);
      all.max = std::max(all.max, own.max);
    }
  }
  for (const Backdrop& backdrop : Backdrops) {
    if (Plots.at(static_cast<std::size_t>(backdrop.Channel - 1)).Visible && !backdrop.Values.empty()) {
      const auto [low, high] = std::minmax_element(backdrop.Values.begin(), backdrop.Values.end());
      all.min = std::min(all.min, *low);
      all.max = std::max(all.max, *high);
    }
  }
  if (all.Empty() || !std::isfinite(all.min) || !std::isfinite(all.max)) {
    return;
  }
  const double margin = all.min == all.max ? 1.0 : 0.0;
  Ordinate.SetMinMax(static_cast<double>(all.min) - margin, static_cast<double>(all.max) + margin);
}

int Graph::VisiblePlots() const {
  return static_cast<int>(
      std::count_if(Plots.begin(), Plots.end(), [](const Plot& plot) { return plot.Visible; }));
}

const Plot* Graph::FirstVisible() const {
  const auto first = std::find_if(Plots.begin(), Plots.end(), [](const Plot& plot) { return plot.Visible; });
  return first == Plots.end() ? nullptr : &*first;
}

std::vector<Plot*> Graph::Visible() {
  std::vector<Plot*> visible;
  for (Plot& plot : Plots) {
    if (plot.Visible) {
      visible.push_back(&plot);
    }
  }
  return visible;
}

void Graph::SetLine(LineStyle style) {
  for (Plot* plot : Visible()) {
    plot->Line = style;
  }
}

void Graph::SetLineWidth(double width) {
  for (Plot* plot : Visible()) {
    plot->LineWidth = width;
  }
}

void Graph::SetPoint(PointStyle style) {
  for (Plot* plot : Visible()) {
    plot->Point = style;
  }
}

void Graph::HalveLines() {
  int next = 0;
  for (Plot* plot : Visible()) {
    plot->Line = HalvedLine(next++, VisiblePlots());
  }
}

void Graph::AlternateLines() {
  int next = 0;
  for (Plot* plot : Visible()) {
    plot->Line = AlternateLine(next++);
  }
}

void Graph::AlternateSolidAndDashed() {
  int next = 0;
  for (Plot* plot : Visible()) {
    plot->Line = next++ % 2 == 0 ? LineStyle::Solid : LineStyle::Dashed;
  }
}

void Graph::AlternatePoints() {
  int next = 0;
  for (Plot* plot : Visible()) {
    plot->Point = AlternatePoint(next++);
  }
}

LineStyle Graph::HalvedLine(int k, int plots) {
  return k < plots / 2 ? LineStyle::Solid : LineStyle::Dashed;
}

LineStyle Graph::AlternateLine(int k) {
  return static_cast<LineStyle>(static_cast<int>(LineStyle::Solid) + k % 5);
}

PointStyle Graph::AlternatePoint(int k) {
  return static_cast<PointStyle>(static_cast<int>(PointStyle::Dot) + k % 9);
}

}  // namespace velmora
