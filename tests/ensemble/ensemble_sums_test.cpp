#include "ensemble/ensemble_sums.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

Trial TrialOf(const std::vector<std::vector<float>>& channels) {
  Trial trial;
  SetChannels(trial, channels);
  return trial;
}

TEST(EnsembleSums, KeepsTwo32BitSumsWorkedByHand) {
  EnsembleSums sums;
  sums.Begin({2, 3}, 1);
  // 2^24 + 1 is no 32-bit number: the sum stays where it was, in either order of operations of 64 bits it
  // would not. 0.1 squared is rounded before it is added.
  const Trial first = TrialOf({{9, 9}, {16777216, 0.1F}, {-3, 2}});
  const Trial second = TrialOf({{9, 9}, {1, 0.1F}, {5, 2}});
  sums.Add(first);
  sums.Add(second);
  EXPECT_EQ(sums.Sum(1, 0), 16777216.0F);
  EXPECT_EQ(sums.Sum(1, 1), 2.0F);
  EXPECT_EQ(sums.Squares(1, 1), 34.0F);
  EXPECT_EQ(sums.Squares(2, 0), 0.1F * 0.1F + 0.1F * 0.1F);
  EXPECT_EQ(sums.Mean(1, 1, 2), 1.0F);
  EXPECT_EQ(sums.Deviation(1, 1, 2), std::sqrt(32.0F));  // (34 - 4/2) / (2 - 1)
  EXPECT_EQ(sums.Deviation(2, 1, 2), 0.0F);
  sums.Remove(second);
  EXPECT_EQ(sums.Sum(1, 1), -3.0F);
  EXPECT_EQ(sums.Squares(1, 1), 9.0F);
}

TEST(EnsembleSums, AVarianceThatRoundsBelowZeroIsNone) {
  // A constant whose squares add up to less than its sum squared: looked for among many, so that one is met.
  int below = 0;
  for (int k = 1; k < 400; ++k) {
    const float x = 1.0F + static_cast<float>(k) / 997.0F;
    EnsembleSums sums;
    sums.Begin({1}, 1);
    const Trial trial = TrialOf({{x, x}});
    for (int file = 0; file < 7; ++file) {
      sums.Add(trial);
    }
    below += sums.Squares(1, 0) - sums.Sum(1, 0) * sums.Sum(1, 0) / 7.0F < 0 ? 1 : 0;
    EXPECT_GE(sums.Deviation(1, 0, 7), 0.0F) << x;  // no NaN either
    EXPECT_LT(sums.Deviation(1, 0, 7), 0.002F) << x;
  }
  EXPECT_GT(below, 0);
}

TEST(EnsembleSums, EveryVectorWidthIsThePlainLoopToTheBit) {
  constexpr int kTrials = 3;
  constexpr std::int64_t kSamples = 53;
  std::vector<std::vector<Samples>> noise;
  for (unsigned n = 1; n <= kTrials; ++n) {
    noise.push_back(NoiseChannels(33, kSamples, n));
  }
  for (const ChannelList& channels :
       {ChannelList{1}, ChannelList{1, 2, 3, 5, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21},
        ChannelList{2, 33}}) {
    for (const SimdLevel level : MachineSimdLevels()) {
      EnsembleSums sums;
      sums.Begin(channels, kSamples - 1);
      for (const auto& file : noise) {
        sums.Add(TrialOf(file), level);
      }
      sums.Remove(TrialOf(noise[1]), level);
      for (std::size_t j = 0; j < channels.size(); ++j) {
        for (std::size_t k = 0; k < kSamples; ++k) {
          float sum = 0.0F;
          float squares = 0.0F;
          const auto x = [&](std::size_t n) {
            return noise[n][static_cast<std::size_t>(channels[j] - 1)][k];
          };
          for (std::size_t n = 0; n < kTrials; ++n) {
            const float square = x(n) * x(n);
            sum += x(n);
            squares += square;
          }
          const float square = x(1) * x(1);
          const auto row = static_cast<std::int64_t>(k) + 1;
          ASSERT_EQ(sums.Sum(row, static_cast<int>(j)), sum - x(1));
          ASSERT_EQ(sums.Squares(row, static_cast<int>(j)), squares - square);
        }
      }
    }
  }
}

TEST(EnsembleSums, TellsWhatWouldLeaveTheRangeOfNumbers) {
  const float most = std::numeric_limits<float>::max();
  const float nothing = std::numeric_limits<float>::quiet_NaN();
  for (const SimdLevel level : MachineSimdLevels()) {
    EnsembleSums sums;
    sums.Begin({1, 2, 3, 4, 5, 6, 7, 8, 9}, 1);
    const auto fits = [&](float odd, float large = 1.0F) {
      std::vector<std::vector<float>> channels(10, {1.0F, large});
      channels[8][1] = odd;
      return sums.Fits(TrialOf(channels), level);
    };
    EXPECT_TRUE(fits(-1.8e19F));
    EXPECT_FALSE(fits(2e19F)) << "its square";
    EXPECT_FALSE(fits(-nothing));
    EXPECT_FALSE(fits(most * 2));
    const Trial large = TrialOf(std::vector<std::vector<float>>(9, {1.5e19F, 1.5e19F}));
    sums.Add(large, level);
    EXPECT_FALSE(sums.Fits(large, level)) << "the sum of two such squares";
    std::vector<std::vector<float>> missing(10, {0.0F, 0.0F});
    missing[9] = {nothing, nothing};
    EXPECT_TRUE(sums.Fits(TrialOf(missing), level)) << "channel 10 is not averaged";
  }
  EnsembleSums sums;
  sums.Begin({1, 4}, 1);
  EXPECT_THROW(sums.Add(TrialOf({{1, 2}, {1, 2}, {1, 2}})), std::invalid_argument);
  EXPECT_THROW(sums.Add(TrialOf({{1}, {1}, {1}, {1}})), std::invalid_argument);
}

}  // namespace
}  // namespace velmora::test
