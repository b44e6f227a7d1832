#include "dsp/smoothing/moving_window.hpp"

#include <cmath>
#include <limits>

#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using Fast = void (*)(Trial&, const ChannelList&, std::int32_t, SimdLevel, const Turn&);
using Plain = void (*)(Trial&, const ChannelList&, std::int32_t);

void Median(Trial& trial, const ChannelList& channels, std::int32_t width, SimdLevel /*level*/,
            const Turn& turn) {
  MovingMedian(trial, channels, width, turn);
}

struct Operation {
  const char* name;
  Fast fast;
  Plain plain;
};

constexpr Operation kOperations[] = {{"average", MovingAverage, MovingAveragePlain},
                                     {"rms", MovingRms, MovingRmsPlain},
                                     {"mav", MovingMeanAbsolute, MovingMeanAbsolutePlain},
                                     {"median", Median, MovingMedianPlain}};

Samples On(Fast operation, const Samples& x, std::int32_t width) {
  Trial trial;
  SetChannels(trial, {x});
  operation(trial, {1}, width, MachineSimdLevel(), {});
  return Channel(trial, 1);
}

TEST(MovingWindow, WindowsWorkedOutByHand) {
  const Samples x = {3, 0, 6, 9, -3, 12};
  EXPECT_EQ(On(MovingAverage, x, 3), (Samples{3, 3, 5, 4, -3, 12}));
  EXPECT_EQ(On(MovingAverage, x, 4), (Samples{3, 0, 4.5F, 3, -3, 12}));  // behind the centre
  EXPECT_EQ(On(MovingAverage, x, 6), x);

  // Sums of squares of pairs: 25, 25, 100; the tail takes the output at NData - W.
  EXPECT_EQ(On(MovingRms, {3, 4, 3, -4}, 2),
            (Samples{std::sqrt(12.5F), std::sqrt(12.5F), std::sqrt(12.5F), std::sqrt(12.5F)}));
  EXPECT_EQ(On(MovingRms, {0, 0, 3, 3, 0, 6, 6}, 3),
            (Samples{std::sqrt(3.0F), std::sqrt(3.0F), std::sqrt(6.0F), std::sqrt(6.0F), std::sqrt(6.0F),
                     std::sqrt(6.0F), std::sqrt(6.0F)}));

  // Step of 1 to 4: (1+1+4)/3 = 2 feeds (2+4+4)/3, which feeds the last window and so the tail.
  const Samples step = On(MovingMeanAbsolute, {-1, 1, -1, 1, 4, -4, 4, -4}, 3);
  const float fourth = 10.0F / 3.0F;
  const auto last = static_cast<float>((double{fourth} + 8.0) / 3.0);
  EXPECT_EQ(step, (Samples{1, 1, 1, 2, fourth, last, last, last}));

  // {5,1,4} gives 4 at 2; then {4,4,2}, {4,2,9}: the outputs feed the windows behind.
  EXPECT_EQ(On(Median, {5, 1, 4, 2, 9, 0}, 3), (Samples{5, 4, 4, 4, 9, 0}));
  EXPECT_EQ(On(Median, {7, 8, 9}, 1), (Samples{7, 8, 9}));
}

TEST(MovingWindow, ConstantsStayAndWideWindowsDoNothing) {
  const Samples constant(20, -0.375F);
  const Samples magnitude(20, 0.375F);
  for (std::int32_t width = 1; width <= 19; ++width) {
    EXPECT_EQ(On(MovingAverage, constant, width), constant) << width;
    EXPECT_EQ(On(Median, constant, width), constant) << width;
    EXPECT_EQ(On(MovingRms, constant, width), magnitude) << width;
    EXPECT_EQ(On(MovingMeanAbsolute, constant, width), magnitude) << width;
  }
  const Samples x = {1, 5, 2};
  for (const Operation& operation : kOperations) {
    for (const std::int32_t width : {-1, 0, 3, 4, 100}) {
      EXPECT_EQ(On(operation.fast, x, width), x) << operation.name << " " << width;
    }
  }
}

void CompareWithPlain(const std::vector<std::vector<float>>& data, const ChannelList& channels,
                      std::int32_t width) {
  for (const Operation& operation : kOperations) {
    Trial expected;
    SetChannels(expected, data);
    operation.plain(expected, channels, width);
    for (const SimdLevel level : MachineSimdLevels()) {
      Trial trial;
      SetChannels(trial, data);
      operation.fast(trial, channels, width, level, {});
      ASSERT_EQ(Bits(trial), Bits(expected)) << operation.name << " level " << static_cast<int>(level)
                                             << " width " << width << " channels " << data.size();
    }
  }
}

TEST(MovingWindow, EveryVectorWidthGivesTheBitsOfThePlainLoop) {
  for (const int count : {1, 2, 3, 7, 8, 9, 16, 37, 64}) {
    const auto noise = NoiseChannels(count, 50, static_cast<unsigned>(count));
    ChannelList all;
    ChannelList some;
    for (int c = 1; c <= count; ++c) {
      all.push_back(c);
      if (c % 3 != 2) {
        some.push_back(c);
      }
    }
    for (const std::int32_t width : {1, 2, 4, 7, 8, 20, 49}) {
      CompareWithPlain(noise, all, width);
      CompareWithPlain(noise, some, width);
    }
  }
  // Over several pieces, with windows narrower and wider than one.
  auto longer = NoiseChannels(5, 1600, 99);
  longer[3][700] = std::numeric_limits<float>::infinity();
  longer[4][1] = 1e30F;
  for (const std::int32_t width : {3, 201, 900}) {
    CompareWithPlain(longer, {1, 4, 5}, width);
  }
}

}  // namespace
}  // namespace velmora::test
