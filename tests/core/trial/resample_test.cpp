#include "core/trial/resample.hpp"

#include <limits>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

/// One channel straight from the definition: the old sample at 1 + (k-1) (N-1)/n, by the line between
/// its neighbours.
std::vector<float> ByDefinition(const std::vector<float>& old, int n) {
  const double step = (static_cast<double>(old.size()) - 1) / n;
  std::vector<float> fresh{old.front()};
  for (int k = 2; k <= n; ++k) {
    const double x = 1 + (k - 1) * step;
    const auto below = static_cast<std::size_t>(std::floor(x));
    const double from = old.at(below - 1);
    fresh.push_back(static_cast<float>(from + (old.at(below) - from) * (x - std::floor(x))));
  }
  fresh.push_back(old.back());
  return fresh;
}

// Every vector width, in place (fewer samples) and beside the old matrix (more), down to one interval.
TEST(ResampleAll, EveryLevelGivesTheDefinitionsBits) {
  for (const int channels : {0, 1, 2, 3, 6, 7, 8, 14, 15, 16, 64}) {
    for (const int n : {1, 2, 49, 98, 99, 100, 101, 250}) {
      const auto noise = NoiseChannels(std::max(channels, 1), 100);
      Trial plain;
      SetChannels(plain, noise);
      plain.CutChannels(channels);
      const float largest = ResampleAllPlainly(plain, n);
      float expected = 0;
      for (int c = 0; c <= channels; ++c) {
        for (const float x : Channel(plain, c)) {
          expected = std::max(expected, std::fabs(x));
        }
      }
      ASSERT_FLOAT_EQ(largest, expected);
      for (int c = 1; c <= channels; ++c) {
        ASSERT_TRUE(SameBits(Channel(plain, c), ByDefinition(noise[static_cast<std::size_t>(c - 1)], n)))
            << channels << " channels, " << n;
      }
      for (const SimdLevel level : MachineSimdLevels()) {
        Trial fast;
        SetChannels(fast, noise);
        fast.CutChannels(channels);
        ASSERT_EQ(ResampleAll(fast, n, level), largest);
        ASSERT_EQ(fast.NData, n + 1);
        ASSERT_EQ(fast.Rate, plain.Rate);
        for (int c = 0; c <= channels; ++c) {
          ASSERT_TRUE(SameBits(Channel(fast, c), Channel(plain, c))) << channels << " channels, " << n;
        }
      }
    }
  }
}

TEST(ResampleAll, WhatCannotBeChangesNothing) {
  Trial trial;
  SetChannels(trial, NoiseChannels(2, 10));
  EXPECT_THROW(ResampleAll(trial, std::numeric_limits<std::int32_t>::max()), std::length_error);
  EXPECT_THROW(ResampleAll(trial, std::numeric_limits<std::int32_t>::max() * 4LL), std::length_error);
  ResampleAll(trial, 0);
  EXPECT_EQ(trial.NData, 10);
  EXPECT_EQ(trial.Rate, 100.0);
  SetChannels(trial, {{5.0F}});
  ResampleAll(trial, 4);
  EXPECT_EQ(trial.NData, 1);
}

}  // namespace
}  // namespace velmora::test
