#include "dsp/design/reflection.hpp"

namespace velmora {

std::vector<double> ContinuedByReflection(std::span<const double> x, std::int64_t count) {
  std::vector<double> all;
  const auto padding = static_cast<std::size_t>(count);
  all.reserve(x.size() + 2 * padding);
  for (std::size_t m = padding; m >= 1; --m) {
    all.push_back(2 * x.front() - x[m]);
  }
  all.insert(all.end(), x.begin(), x.end());
  for (std::size_t m = 1; m <= padding; ++m) {
    all.push_back(2 * x.back() - x[x.size() - 1 - m]);
  }
  return all;
}

}  // namespace velmora
