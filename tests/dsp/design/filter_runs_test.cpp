// The kernels of designed filters: the fast forms against the plain ones bit for bit, values worked out by
// hand.
#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "dsp/design/cfc.hpp"
#include "dsp/design/direct_filter.hpp"
#include "dsp/design/planned_filter.hpp"
#include "dsp/design/recursive_design.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

std::vector<double> Doubles(const Samples& x) {
  return {x.begin(), x.end()};
}

Samples Rounded(const std::vector<double>& x) {
  Samples all;
  for (const double value : x) {
    all.push_back(static_cast<float>(value));
  }
  return all;
}

// Every level, over neighbours and over channels apart, must leave what the plain form leaves.
template <typename Fast, typename Plain>
void ExpectSameBits(std::int64_t samples, const ChannelList& channels, const Fast& fast, const Plain& plain) {
  const auto noise = NoiseChannels(40, samples, 7);
  for (const SimdLevel level : MachineSimdLevels()) {
    Trial trial;
    SetChannels(trial, noise);
    fast(trial, level);
    for (int c = 1; c <= trial.NChan; ++c) {
      Samples expected = noise[static_cast<std::size_t>(c - 1)];
      if (std::find(channels.begin(), channels.end(), c) != channels.end()) {
        std::vector<double> x = Doubles(expected);
        plain(x);
        expected = Rounded(x);
      }
      ASSERT_TRUE(SameBits(Channel(trial, c), expected))
          << "channel " << c << ", " << samples << " samples, level " << static_cast<int>(level);
    }
  }
}

ChannelList UpTo(int last) {
  ChannelList all;
  for (int c = 1; c <= last; ++c) {
    all.push_back(c);
  }
  return all;
}

TEST(FilterRuns, SectionsSideBySideAreThePlainLoopBitForBit) {
  const Biquads four = DesignFilter({.order = 4, .rate = 100, .cutoff = 6});
  const Biquads band =
      DesignFilter({.band = Band::BandPass, .order = 3, .rate = 100, .cutoff = 5, .higher = 20});
  for (const std::int64_t samples : {1, 2, 16, 300, 1111}) {
    for (const ChannelList& channels : {UpTo(40), ChannelList{3}, ChannelList{1, 2, 4, 9, 40}}) {
      for (const Biquads& sections : {four, band}) {
        for (const RunDirection way : {RunDirection::ZeroLag, RunDirection::Forward}) {
          ExpectSameBits(
              samples, channels,
              [&](Trial& trial, SimdLevel level) { RunSections(trial, channels, sections, way, level); },
              [&](std::vector<double>& x) { RunSectionsPlain(x, sections, way); });
        }
      }
    }
  }
}

// Cancel comes as an exception out of a turn, in one of the threads.
TEST(FilterRuns, ATurnThatThrowsEndsTheRunOfAllCores) {
  Trial trial;
  SetChannels(trial, NoiseChannels(40, 20'000));
  int turns = 0;
  const auto stop = [&turns] {
    if (++turns == 3) {
      throw std::runtime_error("stop");
    }
  };
  EXPECT_THROW(RunSections(trial, UpTo(40), DesignFilter({.order = 4, .rate = 100, .cutoff = 6}),
                           RunDirection::ZeroLag, MachineSimdLevel(), stop),
               std::runtime_error);
  EXPECT_EQ(turns, 3);
}

TEST(FilterRuns, SlidingSumsSideBySideAreThePlainLoopBitForBit) {
  const ChannelList channels = {1, 2, 17, 40};
  for (const std::int64_t samples : {51, 64, 1024, 2500}) {
    const TapFilter taps{Doubles(NoiseChannels(1, 101, 3)[0])};
    for (const RunDirection way : {RunDirection::ZeroLag, RunDirection::Forward}) {
      ExpectSameBits(
          samples, channels,
          [&](Trial& trial, SimdLevel level) { RunTaps(trial, channels, taps, way, level); },
          [&](std::vector<double>& x) { RunTapsPlain(x, taps, way); });
    }
    const SavitzkyGolay polynomial = DesignSavitzkyGolay(51, 4, 1, 100);
    ExpectSameBits(
        samples, channels,
        [&](Trial& trial, SimdLevel level) { RunSavitzkyGolay(trial, channels, polynomial, level); },
        [&](std::vector<double>& x) { RunSavitzkyGolayPlain(x, polynomial); });
  }
}

// A start in the steady state: what does not change passes unchanged, and so does a straight line when a
// filter without lag goes on along it.
TEST(FilterRuns, ConstantsPassFromTheFirstSampleToTheLast) {
  const PlannedFilter filters[] = {
      {.kind = DesignFilter({.order = 4, .rate = 1000, .cutoff = 6}), .rate = 1000},
      {.kind = DesignNotch({.rate = 1000, .frequency = 50, .harmonics = 3}), .rate = 1000},
      {.kind = DesignCfc(60, 1000), .rate = 1000},
      {.kind = DesignSavitzkyGolay(11, 3, 0, 1000), .rate = 1000},
      {.kind = MakeDirectFilter({0.2, 0.2}, {2, -1.2}), .rate = 1000},
  };
  for (const PlannedFilter& filter : filters) {
    Trial trial;
    SetChannels(trial, {Samples(400, 3.25F)}, 1000);
    RunPlanned(trial, {1}, filter);
    for (const float y : Channel(trial, 1)) {
      ASSERT_NEAR(y, 3.25 * (filter.kind.index() == 4 ? 0.25 : 1.0), 1e-6) << "kind " << filter.kind.index();
    }
  }
}

TEST(FilterRuns, PolynomialSmoothingHasThePublishedWeights) {
  // Savitzky and Golay 1964, table I: (-3, 12, 17, 12, -3)/35.
  const SavitzkyGolay five = DesignSavitzkyGolay(5, 2, 0, 1);
  const double expected[] = {-3, 12, 17, 12, -3};
  for (std::size_t k = 0; k < 5; ++k) {
    EXPECT_NEAR(five.weights[2][k], expected[k] / 35, 1e-15);
  }
  // A parabola is its own polynomial, also in the half windows at the ends: x = t^2 - 3t at 10 Hz.
  Samples parabola;
  for (int i = 0; i < 9; ++i) {
    parabola.push_back(static_cast<float>(i * i * 0.01 - 3 * i * 0.1));
  }
  Trial trial;
  SetChannels(trial, {parabola, parabola, parabola}, 10);
  RunSavitzkyGolay(trial, {1}, DesignSavitzkyGolay(5, 2, 0, 10));
  RunSavitzkyGolay(trial, {2}, DesignSavitzkyGolay(5, 2, 1, 10));
  RunSavitzkyGolay(trial, {3}, DesignSavitzkyGolay(5, 2, 2, 10));
  for (int i = 0; i < 9; ++i) {
    EXPECT_NEAR(trial.Data(i + 1, 1), parabola[static_cast<std::size_t>(i)], 1e-6);
    EXPECT_NEAR(trial.Data(i + 1, 2), 2 * i * 0.1 - 3, 1e-5);
    EXPECT_NEAR(trial.Data(i + 1, 3), 2, 2e-4);
  }
}

TEST(FilterRuns, TheCutOffIsKeptOverBothRuns) {
  const double half = 1 / std::sqrt(2.0);
  const DesignRequest asked[] = {
      {.order = 2, .rate = 100, .cutoff = 6},
      {.band = Band::HighPass, .order = 5, .rate = 100, .cutoff = 20},
      {.band = Band::BandPass, .order = 2, .rate = 1000, .cutoff = 20, .higher = 450},
      {.band = Band::BandStop, .order = 3, .rate = 1000, .cutoff = 45, .higher = 55},
  };
  for (const DesignRequest& request : asked) {
    const PlannedFilter filter{.kind = DesignFilter(KeptOverBothRuns(request)), .rate = request.rate};
    EXPECT_NEAR(std::abs(PlannedResponse(filter, request.cutoff)), half, 1e-9);
    if (IsBand(request.band)) {
      EXPECT_NEAR(std::abs(PlannedResponse(filter, request.higher)), half, 1e-9);
    }
  }
  const PlannedFilter notch{
      .kind = DesignNotch({.rate = 1000, .frequency = 50, .width = 4, .keptOverBothRuns = true}),
      .rate = 1000};
  EXPECT_NEAR(std::abs(PlannedResponse(notch, 50)), 0, 1e-12);
  // The product of the tangents of both edges is that of the middle.
  const double lower = std::sqrt(50 * 50 + 2 * 2) - 2;
  EXPECT_NEAR(std::abs(PlannedResponse(notch, lower)), half, 2e-3);
}

// Impact classes are 3 dB down near class/0.6 Hz.
TEST(FilterRuns, ImpactClassesAreDownWhereTheStandardSays) {
  for (const auto& [frequencyClass, edge] :
       {std::pair{60, 100.0}, {180, 300.0}, {600, 1000.0}, {1000, 1650.0}}) {
    const PlannedFilter filter{.kind = DesignCfc(frequencyClass, 20000), .rate = 20000};
    EXPECT_NEAR(std::abs(PlannedResponse(filter, edge)), 1 / std::sqrt(2.0), 0.02) << frequencyClass;
  }
  EXPECT_THROW(DesignCfc(1000, 4155), FilterDesignError);
  // By its own recursion: from the first two samples on, forward, then backward.
  const CfcSection c = DesignCfc(180, 2000);
  std::vector<double> x = {0, 0, 0};
  RunCfc(x, c);
  EXPECT_EQ(x, (std::vector<double>{0, 0, 0}));
}

TEST(FilterRuns, CoefficientsRunAsTheirDifferenceEquation) {
  // y(i) = 0.5 x(i) + 0.5 x(i-1) + 0.5 y(i-1), by hand from rest.
  std::vector<double> x = {1, 0, 2, 4};
  RunDirect(x, MakeDirectFilter({1, 1}, {2, -1}), RunDirection::Forward);
  EXPECT_EQ(x, (std::vector<double>{0.5, 0.75, 1.375, 3.6875}));
  for (const char* unstable : {"1 -1", "1, -2.1; 1.2", "1 0 1"}) {
    EXPECT_THROW(MakeDirectFilter({1}, velmora::NumbersOf(unstable)), FilterDesignError) << unstable;
  }
  EXPECT_THROW(MakeDirectFilter({1}, {0, 1}), FilterDesignError);
  EXPECT_THROW(MakeDirectFilter({}, {1}), FilterDesignError);
  EXPECT_THROW(velmora::NumbersOf("1 two"), FilterDesignError);
  EXPECT_EQ(velmora::NumbersOf(" 1,\t-2.5;3e-1 "), (std::vector<double>{1, -2.5, 0.3}));
  // Sections and their product are one filter, there and back too.
  const Biquads one = DesignFilter({.order = 2, .rate = 100, .cutoff = 10});
  const DirectFilter direct = MakeDirectFilter({one[0].b0, one[0].b1, one[0].b2}, {1, one[0].a1, one[0].a2});
  std::vector<double> a = Doubles(NoiseChannels(1, 200)[0]);
  std::vector<double> b = a;
  RunSectionsPlain(a, one, RunDirection::ZeroLag);
  RunDirect(b, direct, RunDirection::ZeroLag);
  for (std::size_t i = 0; i < a.size(); ++i) {
    ASSERT_NEAR(a[i], b[i], 1e-13);
  }
}

// What is drawn is what runs: gain and phase of a long tone that was filtered.
TEST(FilterRuns, TheResponseIsThatOfAToneThatIsRun) {
  constexpr double rate = 1000;
  const PlannedFilter filters[] = {
      {.kind =
           DesignFilter({.approximation = Approximation::Elliptic, .order = 3, .rate = rate, .cutoff = 60}),
       .direction = RunDirection::Forward,
       .rate = rate},
      {.kind = TapFilter{{0.1, 0.2, 0.4, 0.2, 0.1}}, .direction = RunDirection::Forward, .rate = rate},
      {.kind = TapFilter{{0.1, 0.2, 0.4, 0.2, 0.1}}, .rate = rate},
      {.kind = DesignSavitzkyGolay(7, 2, 1, rate), .rate = rate},
      {.kind = MakeDirectFilter({0.3, 0.1}, {1, -0.5, 0.1}),
       .direction = RunDirection::Forward,
       .rate = rate},
  };
  constexpr double frequency = 50;
  for (const PlannedFilter& filter : filters) {
    Samples tone;
    for (int i = 0; i < 4000; ++i) {
      tone.push_back(static_cast<float>(std::sin(2 * Pi * frequency * i / rate)));
    }
    Trial trial;
    SetChannels(trial, {tone}, rate);
    RunPlanned(trial, {1}, filter);
    double sine = 0;
    double cosine = 0;
    for (int i = 2000; i < 3000; ++i) {
      sine += double{trial.Data(i + 1, 1)} * std::sin(2 * Pi * frequency * i / rate) / 500;
      cosine += double{trial.Data(i + 1, 1)} * std::cos(2 * Pi * frequency * i / rate) / 500;
    }
    const PlannedPoint point = PlannedResponses(filter, {0, 10, frequency})[2];
    EXPECT_NEAR(point.gain, std::hypot(sine, cosine), 1e-5 * point.gain);
    EXPECT_NEAR(std::remainder(point.phase - std::atan2(cosine, sine) * 180 / Pi, 360), 0, 1e-3);
  }
}

}  // namespace
}  // namespace velmora::test
