// EMG statistics and amplitude distributions in lanes, against plain loops.
#include "emg/emg_statistics.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "emg/amplitude_distribution.hpp"
#include "support/command_test.hpp"
#include "support/recordings.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

bool Same(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool Same(const EmgStatistics& a, const EmgStatistics& b) {
  return Same(a.mean, b.mean) && Same(a.deviation, b.deviation) && Same(a.meanAbsolute, b.meanAbsolute) &&
         Same(a.rms, b.rms) && Same(a.largest, b.largest) && Same(a.sum, b.sum) &&
         Same(a.absoluteSum, b.absoluteSum) && a.zeroCrossings == b.zeroCrossings && a.peaks == b.peaks;
}

// Few values, so that neighbours are equal, opposite or 0 often enough, and the ends of what 32 bits hold.
std::vector<Samples> AwkwardChannels(int channels, int samples) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const Samples values = {0.0F,   -0.0F, 0.1F,   -0.1F, 0.2F,  -0.2F, 1e-45F, -1e-45F,
                          1e-30F, 3e38F, -3e38F, 0.1F,  -0.3F, 1.0F,  -1.0F};
  std::minstd_rand random(7);
  std::vector<Samples> made(static_cast<std::size_t>(channels));
  for (Samples& channel : made) {
    for (int i = 0; i < samples; ++i) {
      channel.push_back(values[random() % values.size()]);
    }
  }
  made.back()[static_cast<std::size_t>(samples) / 2] = std::numeric_limits<float>::quiet_NaN();
  made.front()[static_cast<std::size_t>(samples) / 3] = kInfinity;
  return made;
}

TEST(EmgStatistics, ChannelsSideBySideGiveTheBitsOfPlainLoops) {
  PerChannel<double> thresholds{};
  for (std::size_t c = 0; c < thresholds.size(); ++c) {
    thresholds[c] = std::array{0.0, 0.1, 0.1F * 1.0, 1e-300, 0.2, 2.0}[c % 6];  // 0.1 is above its 32 bits
  }
  for (const int channels : {1, 3, 4, 5, 8, 15, 16, 17, 64}) {
    Trial trial;
    SetChannels(trial, AwkwardChannels(channels, 700), 1000.0);
    for (const SampleRange range :
         {SampleRange{1, 700}, SampleRange{3, 515}, SampleRange{9, 10}, SampleRange{5, 5}}) {
      const auto plain = TakeEmgStatisticsPlain(trial, range, thresholds, 0.001);
      for (const SimdLevel level : MachineSimdLevels()) {
        const auto fast = TakeEmgStatistics(trial, range, thresholds, 0.001, level);
        for (int c = 1; c <= channels; ++c) {
          EXPECT_TRUE(Same(fast[c], plain[c])) << "channel " << c << " of " << channels << ", " << range.lo
                                               << " to " << range.hi << ", level " << static_cast<int>(level);
        }
      }
    }
  }
}

TEST(AmplitudeDistribution, EveryWidthCountsAsAPlainLoop) {
  for (const int samples : {3, 1024, 3071, 300'001}) {
    Trial trial;
    SetChannels(trial, NoiseChannels(3, samples));
    const Samples x = NoiseChannels(3, samples)[1];
    for (const std::int16_t bins : {std::int16_t{1}, std::int16_t{7}, std::int16_t{100}, std::int16_t{200}}) {
      float largest = 0.0F;
      for (const float sample : x) {
        largest = std::max(largest, std::abs(sample));
      }
      const auto width = static_cast<float>(largest / (100.0 / bins * 100));
      std::vector<double> counts(static_cast<std::size_t>(bins) + 1);
      for (const float sample : x) {
        const int bin = static_cast<int>(std::abs(sample) / width) + 1;
        counts[static_cast<std::size_t>(std::min<int>(bin, bins))] += 1;
      }
      for (const SimdLevel level : MachineSimdLevels()) {
        EXPECT_EQ(ComputeAmplitudeDistribution(trial, 2, bins, level)->ApdfCounts, counts) << samples;
      }
    }
  }
}

struct EmgRecordings : FileTest {};

// The sum of magnitudes that others print for four channels of this walk (pyomeca), whose text is cut to six
// places.
TEST_F(EmgRecordings, MagnitudesOfAWalkAddUpToThePublishedSum) {
  const std::optional<std::string> file = Recording("vendor/vicon_nexus_analogs.csv");
  if (!file) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  LoadPath(*file);
  const auto statistics = TakeEmgStatistics(trial, {1, trial.NData}, {}, 1 / trial.Rate);
  double sum = 0.0;
  for (int c = 1; c <= trial.NChan; ++c) {
    const std::string label = Trim(trial.ChanLabel[c].Text());
    if (label == "EMG1" || label == "EMG10" || label == "EMG11" || label == "EMG12") {
      sum += statistics[c].absoluteSum;
    }
  }
  EXPECT_NEAR(sum, 2.26749462, 2e-6);
}

}  // namespace
}  // namespace velmora::test
