#include "graph/envelope_pyramid.hpp"

#include <limits>
#include <random>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Every sample, one after the other, each in the last column that begins at it or before.
std::vector<Extremes> BruteForce(const SampleMatrix& matrix, int channel, std::int64_t first,
                                 std::int64_t last, int columns) {
  std::vector<Extremes> all(static_cast<std::size_t>(columns));
  const std::int64_t samples = last - first + 1;
  std::size_t k = 0;
  for (std::int64_t i = 0; i < samples; ++i) {
    while (static_cast<std::int64_t>(k + 1) * samples / columns <= i) {
      ++k;
    }
    if (first + i < 1 || first + i > matrix.Samples()) {
      continue;
    }
    const float x = matrix.At(first + i, channel);
    all[k].min = x < all[k].min ? x : all[k].min;
    all[k].max = x > all[k].max ? x : all[k].max;
  }
  return all;
}

std::int64_t Below(std::mt19937& random, std::int64_t limit) {
  return static_cast<std::int64_t>(random()) % limit;
}

// Peaks, infinities, single NaN and long runs of them.
void Roughen(SampleMatrix& matrix, std::mt19937& random) {
  for (int c = 0; c <= matrix.Channels(); ++c) {
    for (int n = 0; n < 30; ++n) {
      const std::int64_t i = 1 + Below(random, matrix.Samples());
      constexpr float kOdd[] = {1e30F, -1e30F, kInfinity, -kInfinity, kNaN, kNaN};
      matrix.At(i, c) = kOdd[random() % 6];
    }
    const std::int64_t start = 1 + Below(random, matrix.Samples());
    const std::int64_t end = std::min<std::int64_t>(matrix.Samples(), start + 700);
    for (std::int64_t i = start; i < end; ++i) {
      matrix.At(i, c) = kNaN;
    }
  }
}

TEST(EnvelopePyramid, ColumnsAreTheExtremesOfEverySample) {
  std::mt19937 random(5);
  for (const int channels : {1, 2, 4, 8, 16, 31, 64}) {
    Trial trial;
    const std::int64_t samples = channels == 2 ? 20000 : 3000 + channels;
    SetChannels(trial, NoiseChannels(channels, samples));
    Roughen(trial.matrix, random);
    for (const SimdLevel level : MachineSimdLevels()) {
      EnvelopePyramid pyramid;
      pyramid.Build(trial.matrix, level);
      for (int n = 0; n < 40; ++n) {
        const std::int64_t first = 1 + Below(random, samples);
        const std::int64_t last = first + Below(random, samples - first + 1);
        const int columns = 1 + static_cast<int>(random() % (n % 2 == 0 ? 7 : 900));
        const ColumnExtremes all = pyramid.Columns(first, last, columns);
        for (const int c : {0, 1, channels}) {
          const std::vector<Extremes> expected = BruteForce(trial.matrix, c, first, last, columns);
          ASSERT_EQ(pyramid.Columns(c, first, last, columns), expected)
              << "channel " << c << " of " << channels << ", " << first << " to " << last << " in "
              << columns;
          for (int k = 0; k < columns; ++k) {
            ASSERT_EQ(all.At(k, c), expected[static_cast<std::size_t>(k)]);
          }
        }
      }
    }
  }
}

TEST(EnvelopePyramid, SaysWhereThereIsNothing) {
  Trial trial;
  std::vector<float> x(200, 1.0F);
  std::fill(x.begin() + 50, x.begin() + 150, kNaN);
  x[120] = -2.0F;
  SetChannels(trial, {x});
  EnvelopePyramid pyramid;
  EXPECT_TRUE(pyramid.Columns(1, 1, 200, 1).front().Empty());  // nothing built yet
  pyramid.Build(trial.matrix);
  const std::vector<Extremes> columns = pyramid.Columns(1, 1, 200, 4);
  EXPECT_EQ(columns[0], (Extremes{1, 1}));
  EXPECT_TRUE(columns[1].Empty());
  EXPECT_EQ(columns[2], (Extremes{-2, -2}));
  EXPECT_EQ(pyramid.Whole(1), (Extremes{-2, 1}));
  // Columns before, within and behind the trial.
  const std::vector<Extremes> wide = pyramid.Columns(1, -199, 400, 3);
  EXPECT_TRUE(wide[0].Empty());
  EXPECT_EQ(wide[1], (Extremes{-2, 1}));
  EXPECT_TRUE(wide[2].Empty());
  // Three samples in seven columns: 0/7, 3/7, ... begin at 0, 0, 0, 1, 1, 2, 2.
  const std::vector<Extremes> thin = pyramid.Columns(1, 1, 3, 7);
  const bool filled[] = {false, false, true, false, true, false, true};
  for (std::size_t k = 0; k < 7; ++k) {
    EXPECT_EQ(!thin[k].Empty(), filled[k]) << k;
  }
  EXPECT_TRUE(pyramid.Columns(1, 5, 4, 2)[1].Empty());
  EXPECT_TRUE(pyramid.Columns(1, 1, 200, 0).empty());
  EXPECT_THROW((void)pyramid.Columns(2, 1, 200, 1), std::out_of_range);
}

TEST(EnvelopePyramid, TakesLessThanAnEighthOfTheMatrix) {
  for (const std::int64_t samples : {1, 31, 32, 33, 511, 512, 8192, 100000}) {
    Trial trial;
    trial.AllocateData(3, samples);
    EnvelopePyramid pyramid;
    pyramid.Build(trial.matrix);
    EXPECT_LE(pyramid.Bytes() * 8, static_cast<std::size_t>(samples) * 4 * sizeof(float)) << samples;
    EXPECT_EQ(pyramid.Bytes() > 0, samples >= 32);
  }
}

}  // namespace
}  // namespace velmora::test
