#include "trigger/trigger_scan.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "support/trials.hpp"
#include "trigger/trigger_filters.hpp"

namespace velmora::test {
namespace {

using Found = std::vector<std::int32_t>;

Found Scan(const Samples& samples, TriggerKind kind, float high = 1, float low = -1,
           std::size_t most = 1000) {
  Trial trial;
  SetChannels(trial, {Samples(samples.size(), 9.0F), samples});
  const SampleRange all{1, trial.NData};
  return ScanForTriggers(trial.matrix, 2, {kind, high, low}, all, most);
}

TEST(TriggerScan, OneLevelIsPassedWhereASampleReachesIt) {
  const Samples samples = {0, 1, 1, 2, 0, 2, 1, 0, 1};
  EXPECT_EQ(Scan(samples, TriggerKind::Above), (Found{2, 6}));  // the last sample is none
  EXPECT_EQ(Scan(samples, TriggerKind::Below), (Found{5, 7}));  // not 8: a = 1 does not lie above 1
  EXPECT_EQ(Scan(samples, TriggerKind::Above, 1, -1, 1), (Found{2}));
  EXPECT_EQ(Scan({2, 2, 2}, TriggerKind::Above), Found{});
  EXPECT_EQ(Scan({0, 2}, TriggerKind::Above), Found{});
  EXPECT_EQ(Scan({0}, TriggerKind::Above), Found{});
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Scan({0, kNaN, 2, 0, 2, 2}, TriggerKind::Above), (Found{5}));
  EXPECT_EQ(Scan({0, 2, 0, 2, 0}, TriggerKind::Above, kNaN), Found{});
}

TEST(TriggerScan, TwoLevelsByTurnsAreAHysteresis) {
  //                       1  2  3  4  5  6   7  8  9   10 11
  const Samples samples = {0, 2, 0, 2, 0, -2, 0, 2, -2, 2, 2};
  EXPECT_EQ(Scan(samples, TriggerKind::AboveThenBelow), (Found{2, 6, 8, 9, 10}));
  // First downwards through the upper level, then upwards through the lower one.
  EXPECT_EQ(Scan(samples, TriggerKind::BelowThenAbove), (Found{3, 7, 9, 10}));
  // At one level.
  EXPECT_EQ(Scan(samples, TriggerKind::AboveThenBelow, 1, 1), (Found{2, 3, 4, 5, 8, 9, 10}));
}

TEST(TriggerScan, BandsAndTurningPoints) {
  //                       1  2  3  4  5   6   7  8
  const Samples samples = {0, 1, 3, 1, -2, -2, 0, 0};
  EXPECT_EQ(Scan(samples, TriggerKind::Outside), (Found{2, 5}));
  EXPECT_EQ(Scan(samples, TriggerKind::Inside), (Found{4, 7}));
  EXPECT_EQ(Scan(samples, TriggerKind::PeaksAndValleys), (Found{3, 5, 7}));
  EXPECT_EQ(Scan(samples, TriggerKind::Peaks), (Found{3, 7}));  // a flat top: where it begins
  EXPECT_EQ(Scan(samples, TriggerKind::Valleys), (Found{5}));
}

TEST(TriggerScan, StretchesFindWhatSamplesFind) {
  std::mt19937 random(5);
  Trial trial;
  auto channels = NoiseChannels(3, 2000);
  channels[1][700] = std::numeric_limits<float>::quiet_NaN();
  for (std::size_t i = 1; i < 2000; ++i) {
    channels[2][i] = channels[2][i - 1] + 0.1F * channels[2][i];  // slow: long stretches without a trigger
    channels[0][i] = channels[0][i] < 0 ? 0.0F : 0.5F;            // equal neighbours, and levels met exactly
  }
  SetChannels(trial, channels);
  for (int round = 0; round < 900; ++round) {
    const auto lo = static_cast<std::int32_t>(random() % 2000 + 1);
    const auto hi = lo + static_cast<std::int32_t>(random() % (2001 - static_cast<unsigned>(lo)));
    const TriggerCondition condition{static_cast<TriggerKind>(round % kTriggerKinds), 0.5F,
                                     round % 2 == 0 ? 0.0F : -0.9F};
    const std::size_t most = random() % 3 == 0 ? random() % 20 : 1000;
    const int channel = static_cast<int>(random() % 3) + 1;
    EXPECT_EQ(ScanForTriggers(trial.matrix, channel, condition, {lo, hi}, most),
              ScanPlain(trial.matrix, channel, condition, {lo, hi}, most))
        << KindText(condition.kind) << ", channel " << channel << ", " << lo << " to " << hi;
  }
}

/// At 10 Hz, samples 2 4 5 8 9 10 with these integrals.
std::vector<Trigger> Filtered(const TriggerFilters& filters) {
  std::vector<Trigger> triggers = {{2, 1, 0}, {4, 1, 5}, {5, 1, -5}, {8, 1, 0}, {9, 1, 0.5}, {15, 1, -20}};
  FilterTriggers(triggers, filters, 10.0);
  return triggers;
}

Found SamplesOf(const std::vector<Trigger>& triggers) {
  Found samples;
  for (const Trigger& trigger : triggers) {
    samples.push_back(trigger.sample);
  }
  return samples;
}

TEST(TriggerFilters, SumsRunFromTheTriggerBefore) {
  Trial trial;
  SetChannels(trial, {{7, 7, 7, 7, 7, 7}, {1, 2, 3, -4, 0x1p30F, 1}});
  EXPECT_EQ(MeasureTriggers(trial.matrix, 2, Found{2, 3, 6}),
            (std::vector<Trigger>{{2, 2, 0}, {3, 3, 2}, {6, 1, 0x1p30 - 1}}));  // not in 32 bits
}

TEST(TriggerFilters, SignsSizesAndTimesRefuse) {
  EXPECT_EQ(SamplesOf(Filtered({})), (Found{2, 4, 5, 8, 9, 15}));
  EXPECT_EQ(SamplesOf(Filtered({.PositiveOnly = true})), (Found{2, 4, 9}));
  EXPECT_EQ(SamplesOf(Filtered({.NegativeOnly = true})), (Found{2, 5, 15}));
  EXPECT_EQ(SamplesOf(Filtered({.MinIntegral = 0.5})), (Found{2, 4, 5, 15}));  // of the sum over the rate
  EXPECT_EQ(Filtered({.MinIntegral = 2.0}), (std::vector<Trigger>{{2, 1, 0}, {15, 1, -20}}));
  // 5 and 9 stand 0.1 s behind their neighbours; exactly the period is enough.
  EXPECT_EQ(SamplesOf(Filtered({.RefractoryPeriod = 0.2})), (Found{2, 4, 8, 15}));
  // Behind the integrals: what they left is 2 4 9.
  EXPECT_EQ(SamplesOf(Filtered({.RefractoryPeriod = 0.3, .PositiveOnly = true})), (Found{2, 9}));
  // A train of close triggers goes but for its first, though its third is late enough after that.
  std::vector<Trigger> train = {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}};
  FilterTriggers(train, {.RefractoryPeriod = 0.2}, 10.0);
  EXPECT_EQ(SamplesOf(train), (Found{1}));
  std::vector<Trigger> none;
  FilterTriggers(none, {.MinIntegral = 1, .RefractoryPeriod = 1}, 10.0);
  EXPECT_TRUE(none.empty());
}

}  // namespace
}  // namespace velmora::test
