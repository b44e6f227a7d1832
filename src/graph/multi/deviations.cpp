#include "graph/multi/deviations.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

/// The bands of all graphs, with the channels that they are made of.
std::vector<DeviationBand> PairsOf(const Graph& graph, double k) {
  std::vector<int> channels;
  for (const Plot& plot : graph.Plots) {
    if (plot.Visible) {
      channels.push_back(plot.Channel);
    }
  }
  std::vector<DeviationBand> pairs;
  for (std::size_t c = 0; c + 1 < channels.size(); c += 2) {
    DeviationBand& pair = pairs.emplace_back();
    pair.Channel = channels[c];
    pair.SDChannel = channels[c + 1];
    pair.K = k;
  }
  return pairs;
}

}  // namespace

void ShowDeviations(std::span<Graph> graphs, double k) {
  int count = 0;
  for (Graph& graph : graphs) {
    graph.Deviations = PairsOf(graph, k);
    for (DeviationBand& band : graph.Deviations) {
      band.Low = ++count;
      graph.Plots[static_cast<std::size_t>(band.SDChannel - 1)].Visible = false;
    }
  }
  if (count == 0) {
    return;
  }
  const SampleMatrix& from = graphs.front().Plotted()->matrix;
  auto edges = std::make_shared<BandEdges>();
  edges->matrix.Allocate(2 * count, from.Samples());
  for (std::int64_t i = 1; i <= from.Samples(); ++i) {
    const float* sample = from.Frame(i);
    float* edge = edges->matrix.Frame(i);
    edge[0] = sample[0];
    for (const Graph& graph : graphs) {
      for (const DeviationBand& band : graph.Deviations) {
        const double mean = sample[band.Channel];
        const double reach = band.K * std::abs(static_cast<double>(sample[band.SDChannel]));
        const std::ptrdiff_t high = 2 * std::ptrdiff_t{band.Low};
        edge[high - 1] = static_cast<float>(mean - reach);
        edge[high] = static_cast<float>(mean + reach);
      }
    }
  }
  edges->envelope.Build(edges->matrix);
  for (Graph& graph : graphs) {
    for (DeviationBand& band : graph.Deviations) {
      band.Low = 2 * band.Low - 1;
      band.Edges = edges;
    }
  }
}

Extremes ExtremesOf(const std::vector<DeviationBand>& bands) {
  Extremes all;
  for (const DeviationBand& band : bands) {
    for (const int row : {band.Low, band.Low + 1}) {
      const Extremes own = band.Edges->envelope.Whole(row);
      all.min = std::min(all.min, own.min);
      all.max = std::max(all.max, own.max);
    }
  }
  return all;
}

}  // namespace velmora
