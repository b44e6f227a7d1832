#include "dsp/filters/recursive_filter_lanes.hpp"

#include <random>

#include "dsp/filters/recursive_filter.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

FilterVerdict FilterPlainly(Trial& trial, int c, const ChannelsFilter& filter) {
  const auto at = static_cast<std::size_t>(c);
  const FilterSettings settings{.Cutoff = filter.Cutoffs[at],
                                .Passes = filter.Passes[at],
                                .Padding = filter.Padding,
                                .IsZeroLag = filter.ZeroLag[at],
                                .IsCritical = filter.design == FilterDesign::CriticallyDamped,
                                .PadZeros = filter.PadZeros,
                                .Rectify = filter.Rectify};
  const SampleRange all{1, trial.NData};
  const bool low = filter.type == PassType::Low;
  if (filter.design == FilterDesign::Bessel) {
    return (low ? LowPassBesselChannel : HighPassBesselChannel)(trial, c, all, settings);
  }
  return (low ? LowPassChannel : HighPassChannel)(trial, c, all, settings);
}

class RandomTrials {
 public:
  ChannelsFilter NextFilter(std::int32_t padding, bool zeros) {
    ChannelsFilter filter{.type = Below(2) == 0 ? PassType::Low : PassType::High,
                          .design = static_cast<FilterDesign>(Below(3)),
                          .Padding = padding,
                          .PadZeros = zeros,
                          .Rectify = Below(2) == 0};
    const bool alike = Below(2) == 0;  // as most people filter: every channel, one pass
    for (std::size_t c = 1; c <= kMaxChannels; ++c) {
      filter.Cutoffs[c] = static_cast<float>(Below(alike ? 30 : 60)) + (alike ? 1.0F : -5.0F);
      filter.Passes[c] = static_cast<std::int16_t>(alike ? 1 : Below(4));
      filter.ZeroLag[c] = alike || Below(2) == 0;
    }
    return filter;
  }
  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

 private:
  std::mt19937 random_{4};
};

TEST(RecursiveFilterLanes, BitsOfThePlainLoopAtEveryWidth) {
  struct Padding {
    std::int32_t count;
    bool zeros;
  };
  RandomTrials random;
  for (int channels = 1; channels <= kMaxChannels; ++channels) {
    for (const Padding padding :
         {Padding{0, false}, {1, true}, {10, true}, {-10, false}, {7, false}, {90, false}}) {
      const ChannelsFilter filter = random.NextFilter(padding.count, padding.zeros);
      const auto noise = NoiseChannels(channels, 1 + random.Below(100), static_cast<unsigned>(channels));
      Trial plain;
      SetChannels(plain, noise);
      std::vector<FilterVerdict::Outcome> outcomes(noise.size() + 1);
      for (int c = 1; c <= channels; ++c) {
        if (filter.Cutoffs[static_cast<std::size_t>(c)] > 0) {
          outcomes[static_cast<std::size_t>(c)] = FilterPlainly(plain, c, filter).outcome;
        }
      }
      for (const SimdLevel level : MachineSimdLevels()) {
        Trial lanes;
        SetChannels(lanes, noise);
        const PerChannel<FilterVerdict> verdicts = FilterChannels(lanes, filter, level);
        ASSERT_EQ(Bits(lanes), Bits(plain))
            << channels << " channels, padding " << padding.count << ", level " << static_cast<int>(level);
        for (std::size_t c = 1; c < outcomes.size(); ++c) {
          ASSERT_EQ(verdicts[c].outcome, outcomes[c]);
        }
      }
    }
  }
}

// Longer than the rows that are staged and fetched together, full of zeros and of huge numbers.
TEST(RecursiveFilterLanes, LongSignalsAndExtremeNumbers) {
  for (const int channels : {3, 40, 64}) {
    auto noise = NoiseChannels(channels, 3000);
    noise[0] = std::vector<float>(3000, 0.0F);
    noise[1][1500] = 1e38F;
    noise[2].assign(3000, 1e-42F);
    ChannelsFilter filter{.Padding = 200};
    filter.Cutoffs.fill(6.0F);
    filter.Passes.fill(2);
    filter.ZeroLag.fill(true);
    Trial plain;
    SetChannels(plain, noise);
    for (int c = 1; c <= channels; ++c) {
      FilterPlainly(plain, c, filter);
    }
    for (const SimdLevel level : MachineSimdLevels()) {
      Trial lanes;
      SetChannels(lanes, noise);
      FilterChannels(lanes, filter, level);
      EXPECT_EQ(Bits(lanes), Bits(plain)) << channels << " channels, level " << static_cast<int>(level);
    }
  }
}

TEST(RecursiveFilterLanes, NothingToFilter) {
  Trial empty;
  ChannelsFilter filter;
  filter.Cutoffs.fill(6.0F);
  filter.Passes.fill(1);
  EXPECT_TRUE(FilterChannels(empty, filter)[1].Accepted());
}

}  // namespace
}  // namespace velmora::test
