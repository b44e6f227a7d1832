#include "emg/envelope_preview.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kMeansOfTen = -10;
constexpr std::int32_t kMostShown = 100'000;
constexpr int kRawColour = 9;  // the grey one
constexpr int kRectifiedColour = 1;
constexpr int kEnvelopeColour = 2;

FormGraph::Plot Curve(std::string name, int colour, const std::vector<double>& times,
                      const std::vector<float>& samples, double width = 1.0) {
  return {.name = std::move(name),
          .colour = colour,
          .x = times,
          .y = {samples.begin(), samples.end()},
          .width = width};
}

void FitAboutZero(FormGraph& graph) {
  graph.x.minimum = graph.plots[0].x.front();
  graph.x.maximum = graph.plots[0].x.back();
  double most = 0.0;
  for (const double y : graph.plots[0].y) {
    most = std::isfinite(y) ? std::max(most, std::fabs(y)) : most;
  }
  graph.y.maximum = most > 0 ? 1.05 * most : 1.0;
  graph.y.minimum = -graph.y.maximum;
}

}  // namespace

FilterSettings EnvelopeFilter(float cutoff) {
  return {.Cutoff = cutoff, .Passes = 1, .Padding = kMeansOfTen, .IsZeroLag = true, .IsCritical = true};
}

FormGraph PreviewEnvelope(const Trial& trial, int channel, float cutoff) {
  const std::int32_t count = std::min(trial.NData, kMostShown);
  std::vector<double> times;
  std::vector<float> raw;
  for (std::int32_t i = 1; i <= count; ++i) {
    times.push_back(trial.matrix.Frame(i)[0]);
    raw.push_back(trial.matrix.Frame(i)[channel]);
  }
  std::vector<float> rectified = raw;
  for (float& x : rectified) {
    x = std::fabs(x);
  }
  FormGraph graph{.title = ChannelNumber(channel) + " " + Trim(trial.ChanLabel[channel].Text()),
                  .x = {.caption = "Time (s)"},
                  .y = {.caption = Trim(trial.ChanUnits[channel].Text())}};
  if (count < trial.NData) {
    graph.title += ", the first " + std::to_string(count) + " samples";
  }
  graph.plots = {Curve("Raw", kRawColour, times, raw),
                 Curve("Rectified", kRectifiedColour, times, rectified)};
  if (cutoff > 0) {
    std::vector<float>& envelope = rectified;
    if (LowPassArray(envelope, trial.Rate, EnvelopeFilter(cutoff)).Accepted()) {
      graph.plots.push_back(
          Curve("Envelope, " + PlainNumber(cutoff) + " Hz", kEnvelopeColour, times, envelope, 2.0));
    } else {
      graph.title += ", no filter of " + PlainNumber(cutoff) + " Hz at this sampling rate";
    }
  } else {
    graph.title += ", not processed";
  }
  FitAboutZero(graph);
  return graph;
}

}  // namespace velmora
