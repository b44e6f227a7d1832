#pragma once

#include <cstdint>

#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// The first `own` samples of a column, taken at `slow` Hz, become the samples of the whole column at `fast`
/// Hz by linear interpolation; what lies behind the last of them takes its value. Throws std::bad_alloc.
void InterpolateSlowChannel(SampleMatrix& matrix, int column, std::int64_t own, double slow, double fast);

}  // namespace velmora
