// HIC over all pairs of samples: closed forms, and every vector width against the plain double loop.
#include "impact/accelerometry/hic_over_pairs.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "support/signals.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

using Numbers = std::vector<double>;

Numbers HalfSine(double peak, int samples) {
  Numbers r =
      Sampled<double>(samples + 1, [&](int i) { return peak * std::sin(std::numbers::pi * i / samples); });
  r.back() = 0;  // the sine of pi as rounded lies above 0, of multiples below
  return r;
}

TEST(HicOverPairs, ClosedForms) {
  // The published example: sin(20 pi t) g over 0.05 s at 10 kHz, at most 30 ms.
  const Numbers sine = Sampled<double>(501, [](int i) { return std::sin(20 * std::numbers::pi * i * 1e-4); });
  const HicOverPairs published = FindHicOverPairs(sine, 300, 1e-4);
  EXPECT_NEAR(published.value, 0.02048019, 5e-9);
  EXPECT_EQ(published.first, 100);
  EXPECT_EQ(published.last, 400);

  // A half-sine's best interval is shorter than the pulse: 0.41465 A^2.5 T.
  const HicOverPairs half = FindHicOverPairs(HalfSine(80, 2000), 5000, 1e-5);
  EXPECT_NEAR(half.value, 0.41465 * std::pow(80, 2.5) * 0.02, 0.01);
  EXPECT_LT(half.last - half.first, 2000);
  EXPECT_EQ(half.first + half.last, 2000) << "in the middle";

  // A plateau: a^2.5 T from edge to edge, however long the limit.
  Numbers plateau(200, 0.0);
  std::fill(plateau.begin() + 50, plateau.begin() + 91, 4.0);
  const HicOverPairs flat = FindHicOverPairs(plateau, 150, 1e-3);
  EXPECT_EQ(flat.first, 50);
  EXPECT_EQ(flat.last, 90);
  EXPECT_NEAR(flat.value, 32 * 0.04, 1e-12);
  EXPECT_EQ(FindHicOverPairs({}, 5, 1e-3).value, 0);
  EXPECT_EQ(FindHicOverPairs(Numbers{3}, 5, 1e-3).value, 0);
  EXPECT_EQ(FindHicOverPairs(Numbers(600, 0.0), 5, 1e-3).last, 0);
}

TEST(HicOverPairs, EveryVectorWidthFindsWhatThePlainLoopFinds) {
  std::vector<Numbers> signals = {Numbers(900, 0.3), Numbers(257, 1e-30), HalfSine(90, 700), Numbers{1, 5},
                                  Numbers(256, 1e30)};
  for (const unsigned seed : {1U, 2U, 3U}) {
    const Samples signs = NoiseChannels(1, 1500, seed)[0];
    Numbers noise(signs.begin(), signs.end());
    std::transform(noise.begin(), noise.end(), noise.begin(), [](double x) { return std::abs(x); });
    signals.push_back(noise);
    std::sort(noise.begin(), noise.end());
    signals.push_back(noise);  // the best pair is the last
    std::reverse(noise.begin(), noise.end());
    signals.push_back(noise);
  }
  Numbers ties(2000, 0.0);
  for (std::size_t i = 100; i < ties.size(); i += 300) {
    std::fill_n(ties.begin() + static_cast<std::ptrdiff_t>(i), 40, 5.0);
  }
  signals.push_back(ties);
  for (const Numbers& r : signals) {
    for (const std::int64_t longest : {1, 2, 63, 300, 5000}) {
      const HicOverPairs plain = FindHicOverPairsPlain(r, longest, 5e-5);
      for (const SimdLevel level : MachineSimdLevels()) {
        const HicOverPairs fast = FindHicOverPairs(r, longest, 5e-5, level);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(fast.value), std::bit_cast<std::uint64_t>(plain.value));
        EXPECT_EQ(fast.first, plain.first) << r.size() << " samples, " << longest;
        EXPECT_EQ(fast.last, plain.last) << r.size() << " samples, " << longest;
      }
    }
  }
}

}  // namespace
}  // namespace velmora::test
