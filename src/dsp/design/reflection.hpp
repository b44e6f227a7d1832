#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmora {

/// The signal with `count` samples in front and behind, reflected through its end samples: 2 x(1) - x(1+m)
/// and 2 x(N) - x(N-m). count at most the number of samples - 1.
std::vector<double> ContinuedByReflection(std::span<const double> x, std::int64_t count);

}  // namespace velmora
