#pragma once

#include <memory>
#include <span>
#include <vector>

#include "graph/graph.hpp"

namespace velmora {

/// Every graph shows its channels in twos: the first of two as a mean, with a band of `k` times the second,
/// its standard deviation, to both sides. A last one without a partner stays as it is. The graphs must have
/// been plotted. One pass over the samples for all bands. Throws std::bad_alloc.
void ShowDeviations(std::span<Graph> graphs, double k);

/// From the smallest mean - k*SD to the largest mean + k*SD of all samples. NaN does not count.
Extremes ExtremesOf(const std::vector<DeviationBand>& bands);

}  // namespace velmora
