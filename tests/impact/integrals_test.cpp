#include "impact/integrals.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "support/trials.hpp"

namespace velmora {
namespace {

TEST(Integrals, StatisticsOfARange) {
  Trial trial;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  test::SetChannels(
      trial, {{9, 1, -2, 3, 6, 9}, {0, 5, 5, 5, 5, 0}, {0, -1, 1, -1, 1, 7}, {1, 2, nan, 4, 5, 6}}, 10);
  const auto all = IntegrateChannels(trial, {1, 2, 3, 4}, {2, 5}, 0.1);
  ASSERT_EQ(all.size(), 4U);
  EXPECT_EQ(std::tuple(all[0].sum, all[0].absoluteSum, all[0].path), std::tuple(8, 12, 3 + 5 + 3));
  EXPECT_DOUBLE_EQ(all[0].timeIntegral, 0.8);
  EXPECT_DOUBLE_EQ(all[0].absoluteIntegral, 1.2);
  EXPECT_EQ(all[0].mean, 2);
  EXPECT_DOUBLE_EQ(all[0].deviation, std::sqrt((1 + 16 + 1 + 16) / 4.0));
  EXPECT_DOUBLE_EQ(all[0].Variation(), std::sqrt(8.5) / 2);
  EXPECT_EQ(all[1].deviation, 0);
  EXPECT_EQ(all[1].path, 0);
  EXPECT_EQ(all[2].mean, 0);
  EXPECT_EQ(all[2].Variation(), 0);  // and no division
  EXPECT_TRUE(std::isnan(all[3].sum));
  EXPECT_EQ(IntegrateChannels(trial, {3}, {6, 6}, 0.1)[0].path, 0);
}

TEST(Integrals, EveryVectorWidthGivesTheSameBits) {
  for (const int channels : {1, 7, 64}) {
    Trial trial;
    test::SetChannels(trial, test::NoiseChannels(channels, 777), 100);
    ChannelList all(static_cast<std::size_t>(channels));
    std::iota(all.begin(), all.end(), 1);
    const auto fields = [](const auto& of) {
      return std::tuple(of.sum, of.absoluteSum, of.path, of.deviation);
    };
    const auto narrow = IntegrateChannels(trial, all, {3, 777}, 0.01, SimdLevel::Sse2);
    for (const SimdLevel level : MachineSimdLevels()) {
      const auto wide = IntegrateChannels(trial, all, {3, 777}, 0.01, level);
      for (std::size_t k = 0; k < all.size(); ++k) {
        EXPECT_EQ(fields(wide[k]), fields(narrow[k])) << k;
      }
    }
  }
}

}  // namespace
}  // namespace velmora
