#include "impact/accelerometry/hic_over_pairs.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "impact/phases/work_phases.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kPairStarts = 256;  // of a block
constexpr std::int64_t kWidest = 8;        // doubles in a vector of any level

using GainFinder = void (*)(const double* c, long longest, double* lanes, double* largest);

#define SIMD_KERNEL "impact/accelerometry/hic_pair_lanes.inc"
#include "core/simd_widths.inc"

/// Of a pair so many intervals apart. Rises with the gain, also as it is rounded.
double Criterion(double gain, std::int64_t intervals, double timeStep) {
  const double duration = static_cast<double>(intervals) * timeStep;
  const double mean = gain / duration;
  return mean * mean * std::sqrt(mean) * duration;
}

/// The running integral of an acceleration, searched block by block of starts. Behind its end it stays level:
/// a pair that ends there has no more gain than the one that ends with the last sample, and lasts longer.
class PairSearch {
 public:
  PairSearch(std::span<const double> r, std::int64_t longest, double timeStep, SimdLevel level)
      : samples_(static_cast<std::int64_t>(r.size())),
        longest_(std::min(longest, samples_ - 1)),
        timeStep_(timeStep),
        integral_(RunningIntegral(r, timeStep)),
        find_(AtLevel<GainFinder>(level, sse2::LargestGains, avx2::LargestGains, avx512::LargestGains)),
        lanes_(static_cast<std::size_t>(longest_ * kWidest)),
        largest_(static_cast<std::size_t>(longest_)) {
    integral_.resize(integral_.size() + static_cast<std::size_t>(longest_ + kPairStarts), integral_.back());
  }

  [[nodiscard]] HicOverPairs Find(const Turn& turn) {
    double best = 0.0;
    std::int64_t block = 0;
    for (std::int64_t first = 0; first < samples_; first += kPairStarts) {
      const double here = BestOfBlock(first);
      if (here > best) {
        best = here;
        block = first;
      }
      Give(turn);
    }
    return best > 0 ? PairWith(best, block) : HicOverPairs();
  }

 private:
  double BestOfBlock(std::int64_t first) {
    find_(integral_.data() + first, longest_, lanes_.data(), largest_.data());
    double best = 0.0;
    for (std::int64_t k = 1; k <= longest_; ++k) {
      best = std::max(best, Criterion(largest_[static_cast<std::size_t>(k - 1)], k, timeStep_));
    }
    return best;
  }

  [[nodiscard]] HicOverPairs PairWith(double best, std::int64_t block) const {
    for (std::int64_t i = block; i < samples_; ++i) {
      const double* at = integral_.data() + i;
      for (std::int64_t k = 1; k <= std::min(longest_, samples_ - 1 - i); ++k) {
        if (Criterion(at[k] - at[0], k, timeStep_) == best) {
          return {.value = best, .first = i, .last = i + k};
        }
      }
    }
    return {};
  }

  std::int64_t samples_;
  std::int64_t longest_;
  double timeStep_;
  std::vector<double> integral_;
  GainFinder find_;
  std::vector<double> lanes_;
  std::vector<double> largest_;
};

}  // namespace

HicOverPairs FindHicOverPairs(std::span<const double> r, std::int64_t longest, double timeStep,
                              SimdLevel level, const Turn& turn) {
  return r.size() < 2 ? HicOverPairs() : PairSearch(r, longest, timeStep, level).Find(turn);
}

HicOverPairs FindHicOverPairsPlain(std::span<const double> r, std::int64_t longest, double timeStep) {
  const std::vector<double> integral = RunningIntegral(r, timeStep);
  const auto samples = static_cast<std::int64_t>(r.size());
  HicOverPairs best;
  for (std::int64_t i = 0; i < samples; ++i) {
    const double* at = integral.data() + i;
    for (std::int64_t k = 1; k <= std::min(longest, samples - 1 - i); ++k) {
      const double value = Criterion(at[k] - at[0], k, timeStep);
      if (value > best.value) {
        best = {.value = value, .first = i, .last = i + k};
      }
    }
  }
  return best;
}

}  // namespace velmora
