#include "events/baseline.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

bool Same(const PerChannel<double>& a, const PerChannel<double>& b) {
  return std::memcmp(a.data(), b.data(), sizeof(a)) == 0;
}

TEST(Baseline, MeanAndDeviationOfARegion) {
  Trial trial;
  // 2 and 4 alternate in the region 3..6: mean 3, variance 4/3. The second is constant, and its squares
  // round.
  SetChannels(trial, {{9, 9, 2, 4, 2, 4, 9}, std::vector<float>(7, 0.1F)});
  const Baseline baseline = TakeBaseline(trial, {3, 6});
  EXPECT_EQ(baseline.mean[1], 3.0);
  EXPECT_DOUBLE_EQ(baseline.deviation[1], std::sqrt(4.0 / 3.0));
  EXPECT_DOUBLE_EQ(baseline.mean[2], static_cast<double>(0.1F));
  EXPECT_GE(baseline.deviation[2], 0.0);
  EXPECT_LT(baseline.deviation[2], 1e-8);
  EXPECT_TRUE(std::isnan(TakeBaseline(trial, {3, 3}).deviation[1]));
  EXPECT_EQ(TakeBaseline(trial, {3, 3}).mean[1], 2.0);
}

// Every number of channels that a group of lanes can leave over, every width, blocks that end anywhere.
TEST(Baseline, EveryWidthGivesTheBitsOfThePlainLoop) {
  for (const int channels : {1, 2, 6, 7, 8, 9, 12, 15, 16, 17, 24, 31, 33, 47, 63, 64}) {
    Trial trial;
    auto samples = NoiseChannels(channels, 700, static_cast<unsigned>(channels));
    samples[0][350] = std::numeric_limits<float>::quiet_NaN();
    SetChannels(trial, samples);
    for (const SampleRange region : {SampleRange{1, 700}, {5, 260}, {5, 261}, {2, 3}, {300, 340}}) {
      const Baseline plain = TakeBaselinePlain(trial, region);
      for (const SimdLevel level : MachineSimdLevels()) {
        const Baseline fast = TakeBaseline(trial, region, level);
        EXPECT_TRUE(Same(fast.mean, plain.mean) && Same(fast.deviation, plain.deviation))
            << channels << " channels, from " << region.lo << " to " << region.hi;
      }
    }
  }
}

}  // namespace
}  // namespace velmora::test
