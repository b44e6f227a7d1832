#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

// Samples that are no numbers (NaN, infinite). Tables of values leave them out and count the rest; sums over
// time, spectra, filters and searches refuse the channel and go on with the next.
namespace velmora {

/// How many samples of the channel are no numbers in the range.
std::int64_t MissingSamples(const Trial& trial, int channel, SampleRange range);

/// Says so in a box and of the deed, and returns true, when the channel has such samples in the range.
bool RefuseMissing(Workbench& workbench, int channel, SampleRange range);

/// The channels without such samples; the others are refused one by one.
std::vector<int> WithoutMissing(Workbench& workbench, const std::vector<int>& channels, SampleRange range);

}  // namespace velmora
