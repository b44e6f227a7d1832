#include "results/signal_picture.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/files/paths.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

/// What the values reach from and to; those that are no numbers leave gaps and do not count.
struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void Add(double value) {
    if (std::isfinite(value)) {
      low = std::min(low, value);
      high = std::max(high, value);
    }
  }
  void Add(const std::vector<double>& values) {
    for (const double value : values) {
      Add(value);
    }
  }
  /// What lies in one place has room around it, too.
  [[nodiscard]] double Room() const {
    const double size = high > low ? high - low : std::abs(high);
    return size > 0 ? 0.05 * size : 1.0;
  }
};

/// How far an ellipse reaches from its middle along the abscissa, and along the ordinate.
std::pair<double, double> ReachOf(const FormGraph::Ellipse& ellipse) {
  const double along = std::cos(ellipse.angle * Pi / 180);
  const double across = std::sin(ellipse.angle * Pi / 180);
  return {std::hypot(ellipse.major * along, ellipse.minor * across),
          std::hypot(ellipse.major * across, ellipse.minor * along)};
}

}  // namespace

FormGraph SignalPicture(const Trial& trial, int channel) {
  return {.title = LabelOnOneLine(trial, channel) + ", " + FileNamePart(trial.FileName),
          .x = {.caption = "Time (s)"},
          .y = {.caption = Trim(trial.ChanUnits[channel].Text())},
          .background = FormGraph::Background::White};
}

double TimeAt(const Trial& trial, SampleRange range, double place) {
  const double sample = std::floor(place);
  return double{trial.Data(range.lo + static_cast<std::int64_t>(sample), 0)} + (place - sample) / trial.Rate;
}

void AddBands(FormGraph& graph, const std::vector<TimeSpan>& found, int colour, bool numbered) {
  const std::size_t drawn = std::min(found.size(), kMostBands);
  for (std::size_t k = 0; k < drawn; ++k) {
    graph.bands.push_back({.from = found[k].from,
                           .to = found[k].to,
                           .text = numbered ? std::to_string(k + 1) : std::string(),
                           .colour = colour,
                           .strength = 0.8,
                           .above = true});
  }
}

FormGraph::Plot LevelLine(std::string name, int colour, const std::vector<double>& times, double level) {
  return {.name = std::move(name), .colour = colour, .x = {times.front(), times.back()}, .y = {level, level}};
}

void FitAxes(FormGraph& graph) {
  Extent across;
  Extent up;
  for (const FormGraph::Plot& plot : graph.plots) {
    across.Add(plot.x);
    up.Add(plot.y);
  }
  for (const FormGraph::Ellipse& ellipse : graph.ellipses) {
    const auto [wide, tall] = ReachOf(ellipse);
    across.Add(ellipse.x - wide);
    across.Add(ellipse.x + wide);
    up.Add(ellipse.y - tall);
    up.Add(ellipse.y + tall);
  }
  if (!(across.high >= across.low) || !(up.high >= up.low)) {
    return;
  }
  const double beside = graph.equalScales ? across.Room() : 0.0;
  graph.x.minimum = across.low - beside;
  graph.x.maximum = across.high + beside;
  graph.y.minimum = up.low - up.Room();
  graph.y.maximum = up.high + up.Room();
}

void AddRoomAbove(FormGraph& graph, double part) {
  graph.y.maximum += part * (graph.y.maximum - graph.y.minimum);
}

}  // namespace velmora
