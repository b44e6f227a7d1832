#include "impact/head_impact.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "support/trials.hpp"

namespace velmora {
namespace {

constexpr double kGadd = 0.45766;  // gamma(1.75) / (sqrt(pi) gamma(2.25)): of a half sine

// A half sine of 100 g over 10 ms in the middle of 100 ms, 20 kHz.
std::vector<float> HalfSine(double amplitude) {
  std::vector<float> a(2000, 0.0F);
  for (int i = 0; i <= 200; ++i) {
    a[static_cast<std::size_t>(900 + i)] =
        static_cast<float>(amplitude * std::sin(std::numbers::pi * i / 200));
  }
  return a;
}

TEST(HeadImpact, MeasuresOfAHalfSine) {
  Trial trial;
  test::SetChannels(trial, {HalfSine(100)}, 20000);
  const HeadImpact impact = ReduceHeadImpact(trial, 1, {1, 2000}, {.cutoff = 0.0F, .headformMass = 4.5});
  EXPECT_NEAR(impact.gsi, kGadd * std::pow(100.0, 2.5) * 0.01, 0.5);
  EXPECT_NEAR(impact.peak, 100, 1e-4);
  EXPECT_NEAR(impact.timeOfPeak, 50.0, 1e-3);  // ms
  EXPECT_NEAR(impact.onsetRate, 100 / 50.0, 1e-4);
  EXPECT_NEAR(impact.peakMetric, 980.665, 1e-3);
  const double area = 100 * 0.01 * 2 / std::numbers::pi;  // g s
  EXPECT_NEAR(impact.delta, area / 9.80665, 1e-4);
  EXPECT_NEAR(impact.integral, impact.delta, 1e-4);
  EXPECT_NEAR(impact.average, area / 0.1, 2e-2);
  EXPECT_NEAR(impact.nsi, 4.5 * impact.delta * 100 / 9.80665, 1e-3);
  EXPECT_NEAR(impact.duration, 99.95, 1e-3);
  // 36 ms hold the whole impact: (area / T)^2.5 T.
  EXPECT_NEAR(impact.hic.value, std::pow(area / 0.036, 2.5) * 0.036, 0.05);
  EXPECT_EQ(impact.hicWindow, 720);
  EXPECT_EQ(trial.Data(1000, 1), HalfSine(100)[999]);  // the trial stays as it is
}

// At 1 Hz the index is the total itself, of powers that the C library makes one by one.
TEST(HeadImpact, PowersAreThoseOfTheCLibraryToTheBit) {
  std::mt19937 random(5);
  for (const float largest : {1.0F, 90.0F, 1e-20F, 1e-38F, 3e38F}) {
    std::vector<float> a;
    float total = 0.0F;
    for (int i = 0; i < 200'000; ++i) {
      a.push_back(static_cast<float>(random() >> (random() % 30)) / 0x1p32F * largest);
      total = static_cast<float>(total + std::pow(static_cast<double>(a.back()), 2.5));
    }
    Trial trial;
    test::SetChannels(trial, {a}, 1);
    EXPECT_EQ(ReduceHeadImpact(trial, 1, {1, trial.NData}, {.cutoff = 0.0F}).gsi, total) << largest;
  }
}

TEST(HeadImpact, TheLevelOfA3IsReachedForThreeMilliseconds) {
  Trial trial;
  // At 2000 Hz seven samples are more than 3 ms in 64 bits, six fall short of the 32-bit limit.
  std::vector<float> a(60, 0.0F);
  std::fill_n(a.begin() + 10, 6, 50.0F);
  test::SetChannels(trial, {a}, 2000);
  HeadImpact impact = ReduceHeadImpact(trial, 1, {1, 60}, {.cutoff = 0.0F});
  EXPECT_EQ(impact.a3Level, 0.0F);
  EXPECT_EQ(impact.a3Sample, 0);
  a[16] = 40.0F;
  test::SetChannels(trial, {a}, 2000);
  impact = ReduceHeadImpact(trial, 1, {1, 60}, {.cutoff = 0.0F});
  EXPECT_EQ(impact.a3Level, 40.0F);  // seventh sample of the run
  EXPECT_EQ(impact.a3Sample, 17);
  a[17] = 45.0F;  // the level rises while the run goes on
  a[18] = 45.0F;  // not above the level: ends it
  a[19] = 60.0F;
  test::SetChannels(trial, {a}, 2000);
  impact = ReduceHeadImpact(trial, 1, {1, 60}, {.cutoff = 0.0F});
  EXPECT_EQ(impact.a3Level, 45.0F);
  EXPECT_EQ(impact.a3Sample, 18);
}

TEST(HeadImpact, NegativeSamplesOfTheRangeStopIt) {
  Trial trial;
  std::vector<float> a = HalfSine(50);
  a[3] = -2.0F;
  a[5] = -0.5F;
  test::SetChannels(trial, {a}, 20000);
  const HeadImpact stopped = ReduceHeadImpact(trial, 1, {1, 2000}, {});
  EXPECT_EQ(stopped.negatives, 2);
  EXPECT_EQ(stopped.hic.value, 0.0F);
  EXPECT_EQ(ReduceHeadImpact(trial, 1, {10, 2000}, {}).negatives, 0);  // outside the range
}

TEST(HeadImpact, ScalesAndFilters) {
  Trial trial;
  test::SetChannels(trial, {HalfSine(980.665)}, 20000);
  const HeadImpact scaled =
      ReduceHeadImpact(trial, 1, {1, 2000}, {.scaling = 1 / 9.80665F, .inSeconds = true, .cutoff = 0.0F});
  EXPECT_NEAR(scaled.peak, 100, 1e-4);
  EXPECT_NEAR(scaled.timeOfPeak, 0.05, 1e-6);
  EXPECT_NEAR(scaled.onsetRate, 2000, 0.1);
  const HeadImpact filtered = ReduceHeadImpact(trial, 1, {1, 2000}, {.cutoff = 100.0F});
  EXPECT_LT(filtered.peak, 980.665F);
  EXPECT_EQ(filtered.unfiltered[1000], HalfSine(980.665)[1000]);
  EXPECT_FALSE(ReduceHeadImpact(trial, 1, {1, 2000}, {.cutoff = 9000.0F}).filter.Accepted());
}

}  // namespace
}  // namespace velmora
