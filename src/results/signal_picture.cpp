#include "results/signal_picture.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/files/paths.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

/// What the values reach from and to; those that are no numbers leave gaps and do not count.
struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void Add(const std::vector<double>& values) {
    for (const double value : values) {
      if (std::isfinite(value)) {
        low = std::min(low, value);
        high = std::max(high, value);
      }
    }
  }
};

}  // namespace

FormGraph SignalPicture(const Trial& trial, int channel) {
  return {.title = LabelOnOneLine(trial, channel) + ", " + FileNamePart(trial.FileName),
          .x = {.caption = "Time (s)"},
          .y = {.caption = Trim(trial.ChanUnits[channel].Text())},
          .background = FormGraph::Background::White};
}

std::vector<double> AbscissaOf(const Trial& trial, SampleRange range) {
  return SamplesOf(trial, 0, range);
}

void FitAxes(FormGraph& graph) {
  Extent across;
  Extent up;
  for (const FormGraph::Plot& plot : graph.plots) {
    across.Add(plot.x);
    up.Add(plot.y);
  }
  if (!(across.high >= across.low) || !(up.high >= up.low)) {
    return;
  }
  const double room = std::max((up.high - up.low) * 0.05, 1e-9);
  graph.x.minimum = across.low;
  graph.x.maximum = across.high;
  graph.y.minimum = up.low - room;
  graph.y.maximum = up.high + room;
}

}  // namespace velmora
