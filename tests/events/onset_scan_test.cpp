#include "events/onset_scan.hpp"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<Burst> Scan(const Trial& trial, std::vector<float> thresholds, SampleRange range) {
  std::vector<ScannedChannel> scanned;
  for (int c = 1; c <= trial.NChan; ++c) {
    scanned.push_back({c, thresholds[static_cast<std::size_t>(c - 1)]});
  }
  return FindBursts(trial, scanned, range);
}

TEST(OnsetScan, BurstsBeginAndEndBeyondTheThreshold) {
  Trial trial;
  SetChannels(trial, {{0, 1, 2, 2, 1, 0, 3, 0},           // equal samples neither begin nor end one
                      {0, -1, -2, -2, -1, 0, -3, 0},      // downwards
                      {0, 0, 1, 1, 1, 1, 1, 1},           // lasts to the end; 0 counts as upwards
                      {5, 5, 5, 0, 0, 0, 0, 0},           // high from the start
                      {kNaN, kNaN, 2, kNaN, 2, 0, 0, 0},  // NaN neither begins nor ends one
                      {0, 0, 0, 0, 0, 0, 0, 0}});
  const std::vector<float> thresholds = {1, -1, 0, 1, 1, kNaN};
  EXPECT_EQ(Scan(trial, thresholds, {1, 8}),
            (std::vector<Burst>{{3, 6}, {3, 6}, {3, 8}, {1, 4}, {3, 6}, {}}));
  // From inside: the first sample of the range that is beyond it.
  EXPECT_EQ(Scan(trial, thresholds, {4, 5}), (std::vector<Burst>{{4, 5}, {4, 5}, {4, 5}, {}, {5, 5}, {}}));
  EXPECT_EQ(Scan(trial, thresholds, {8, 8}), (std::vector<Burst>{{}, {}, {8, 8}, {}, {}, {}}));
}

TEST(OnsetScan, ManyChannelsAtOnceFindWhatOneByOneFinds) {
  std::mt19937 random(3);
  Trial trial;
  auto samples = NoiseChannels(20, 3000);
  samples[4][1500] = kNaN;
  SetChannels(trial, samples);
  for (int round = 0; round < 200; ++round) {
    const auto lo = static_cast<std::int32_t>(random() % 3000 + 1);
    const auto hi = lo + static_cast<std::int32_t>(random() % (3001 - static_cast<unsigned>(lo)));
    std::vector<ScannedChannel> scanned;
    for (int c = 1; c <= 20; ++c) {
      // Near the extremes, where bursts are rare and short, or anywhere.
      const float level = static_cast<float>(random()) / 0x1p31F - 1.0F;
      const std::array<float, 3> levels = {level, 0.999F, -0.999F};
      scanned.push_back({c, levels[random() % 3]});
    }
    const std::vector<Burst> all = FindBursts(trial, scanned, {lo, hi});
    for (std::size_t k = 0; k < scanned.size(); ++k) {
      EXPECT_EQ(all[k], FindBurstPlain(trial, scanned[k], {lo, hi})) << lo << " to " << hi;
    }
  }
}

}  // namespace
}  // namespace velmora::test
