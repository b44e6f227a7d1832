#include "statistics/product_sums.hpp"

#include <algorithm>

namespace velmora {
namespace {

#define SIMD_KERNEL "statistics/product_lanes.inc"
#include "core/simd_widths.inc"

using Adder = decltype(&sse2::AddProducts);

void AddPlain(const double* frames, long count, long stride, double* sums) {
  for (long x = 0; x < stride; ++x) {
    for (long y = x; y < stride; ++y) {
      double sum = sums[x * stride + y];
      for (long i = 0; i < count; ++i) {
        sum += frames[i * stride + x] * frames[i * stride + y];
      }
      sums[x * stride + y] = sum;
    }
  }
}

Adder AdderOf(std::optional<SimdLevel> level) {
  return level ? AtLevel<Adder>(*level, sse2::AddProducts, avx2::AddProducts, avx512::AddProducts) : AddPlain;
}

}  // namespace

std::vector<double> ProductSums(std::int64_t n, std::size_t m,
                                const std::function<void(std::int64_t i, std::span<double> values)>& fill,
                                const GoesOn& goesOn, std::optional<SimdLevel> level) {
  constexpr std::int64_t kAtOnce = 64;  // frames: they and the sums stay in the nearest caches
  constexpr std::size_t kWidest = 8;    // series are filled up with zeros to whole vectors
  const std::size_t stride = (m + kWidest - 1) / kWidest * kWidest;
  std::vector<double> frames(static_cast<std::size_t>(kAtOnce) * stride);
  std::vector<double> sums(stride * stride);
  const Adder add = AdderOf(level);
  for (std::int64_t first = 0; first < n; first += kAtOnce) {
    const std::int64_t count = std::min(kAtOnce, n - first);
    for (std::int64_t i = 0; i < count; ++i) {
      fill(first + i, std::span(frames).subspan(static_cast<std::size_t>(i) * stride, m));
    }
    add(frames.data(), static_cast<long>(count), static_cast<long>(stride), sums.data());
    if (!Goes(goesOn, static_cast<double>(first) / static_cast<double>(n))) {
      return {};
    }
  }
  std::vector<double> result(m * m);
  for (std::size_t x = 0; x < m; ++x) {
    std::copy_n(sums.begin() + static_cast<std::ptrdiff_t>(x * stride), m,
                result.begin() + static_cast<std::ptrdiff_t>(x * m));
  }
  return result;
}

}  // namespace velmora
