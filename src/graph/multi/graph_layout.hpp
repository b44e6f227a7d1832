#pragma once

#include <cstdint>

#include "core/questions/form.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Which channels share a graph of the multi-axis graph.
enum class GraphLayout {
  OneByOne,      // the k-th selected channel on graph k
  Combinations,  // on the graph that the user gave the channel's number of
  Pairs,         // 1 and 2, 3 and 4, ...
  HalfToHalf,    // each channel of the first half with its counterpart of the second
  Halves,        // the first half on graph 1, the second on graph 2
  Triplets       // 1 to 3, 4 to 6, ...
};

/// The graph (from 1) of every channel 1..nChan, 0 for those that are not selected. All layouts but the first
/// count the channels by their place in the trial, whether they are selected or not, so graphs may be left
/// without a channel. Of an odd number the first half is the larger. `typed` matters to combinations alone;
/// what is no graph number there counts as not selected.
PerChannel<std::int16_t> AssignGraphs(GraphLayout layout, int nChan, const ChannelFlags& selected,
                                      const ChannelNumbers& typed);

/// The largest graph number, 0 without any.
int LargestGraph(const PerChannel<std::int16_t>& graphs);

}  // namespace velmora
