#include "plot/traces/path_parts.hpp"

#include <algorithm>

#include "plot/plot_colours.hpp"

namespace velmora {
namespace {

// Finer steps of colour than an eye tells apart.
constexpr std::int64_t kTimeColours = 96;
constexpr double kStronger = 2.5;

QColor ColourOfPart(std::int64_t k, Colour background) {
  const double part = static_cast<double>(k) / static_cast<double>(kTimeColours - 1);
  return TraceColour({.LineColor = TimeColour(part)}, background);
}

}  // namespace

std::vector<PathPart> PathParts(const Graph& graph, Colour background) {
  const std::int64_t samples = graph.Times().Samples();
  const bool byTime = graph.Path && graph.Path->ColourByTime;
  const SampleSpan stronger = graph.Path ? graph.Path->Stronger : SampleSpan{};
  std::vector<PathPart> parts;
  for (const Plot& plot : graph.Plots) {
    if (!plot.Visible || plot.Line == LineStyle::None) {
      continue;
    }
    const auto add = [&](const SampleSpan& all, double width) {
      const std::int64_t steps = byTime ? kTimeColours : 1;
      for (std::int64_t k = 0; k < steps; ++k) {
        const SampleSpan own{std::max(1 + (samples - 1) * k / steps, all.begin),
                             std::min(2 + (samples - 1) * (k + 1) / steps, all.end)};
        if (own.end - own.begin >= 2) {
          parts.push_back(
              {&plot, own, byTime ? ColourOfPart(k, background) : TraceColour(plot, background), width});
        }
      }
    };
    add({1, samples + 1}, plot.LineWidth);
    if (stronger.end > stronger.begin) {
      add(stronger, std::max(plot.LineWidth * kStronger, plot.LineWidth + 1));
    }
  }
  return parts;
}

}  // namespace velmora
