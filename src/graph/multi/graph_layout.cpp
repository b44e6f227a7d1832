#include "graph/multi/graph_layout.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

int GraphOf(GraphLayout layout, int channel, int half, int place, double typed) {
  switch (layout) {
    case GraphLayout::OneByOne:
      return place;
    case GraphLayout::Combinations:
      return typed >= 1 && typed <= kMaxChannels ? RoundHalfEven32(typed) : 0;
    case GraphLayout::Pairs:
      return (channel - 1) / 2 + 1;
    case GraphLayout::HalfToHalf:
      return channel <= half ? channel : channel - half;
    case GraphLayout::Halves:
      return channel <= half ? 1 : 2;
    case GraphLayout::Triplets:
      return (channel - 1) / 3 + 1;
  }
  return 0;
}

}  // namespace

PerChannel<std::int16_t> AssignGraphs(GraphLayout layout, int nChan, const ChannelFlags& selected,
                                      const ChannelNumbers& typed) {
  PerChannel<std::int16_t> graphs{};
  const int half = (nChan + 1) / 2;
  int place = 0;
  for (int c = 1; c <= nChan; ++c) {
    if (selected[c]) {
      graphs[c] = static_cast<std::int16_t>(GraphOf(layout, c, half, ++place, typed[c]));
    }
  }
  return graphs;
}

int LargestGraph(const PerChannel<std::int16_t>& graphs) {
  return *std::max_element(graphs.begin(), graphs.end());
}

}  // namespace velmora
