#include "impact/integrals.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "support/trials.hpp"

namespace velmora {
namespace {

TEST(Integrals, OfOneSampleAndOfWhatIsNoNumber) {
  Trial trial;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  test::SetChannels(trial, {{0, -1, 1, -1, 1, 7}, {1, 2, nan, 4, 5, 6}}, 10);
  EXPECT_EQ(IntegrateChannels(trial, {1}, {6, 6}, 0.1)[0].path, 0);
  EXPECT_TRUE(std::isnan(IntegrateChannels(trial, {2}, {2, 5}, 0.1)[0].sum));
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
