#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "core/questions/long_work.hpp"
#include "core/simd.hpp"

namespace velmora {

/// Sums of products of every two of m series over n samples, each in ascending order: entry (x, y) of the
/// result is at x * m + y, for x <= y. `fill` writes sample i (from 0) of all series, m numbers. `level`:
/// none is the plain loop; the bits are the same. Empty when it was ended.
std::vector<double> ProductSums(std::int64_t n, std::size_t m,
                                const std::function<void(std::int64_t i, std::span<double> values)>& fill,
                                const GoesOn& goesOn, std::optional<SimdLevel> level);

}  // namespace velmora
