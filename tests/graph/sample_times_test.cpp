#include "graph/sample_times.hpp"

#include <random>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

struct SampleTimesTest : testing::Test {
  Trial trial;
  SampleTimes times;

  void Take(const std::vector<float>& row, double rate = 100.0) {
    SetChannels(trial, {std::vector<float>(row.size(), 0.0F)}, rate);
    for (std::size_t i = 0; i < row.size(); ++i) {
      trial.Data(static_cast<std::int64_t>(i) + 1, 0) = row[i];
    }
    times.Take(trial);
  }

  // One sample after the other.
  [[nodiscard]] std::int64_t FirstFromPlainly(double time) const {
    std::int64_t i = 1;
    while (i <= times.Samples() && times.At(i) < time) {
      ++i;
    }
    return i;
  }
};

TEST_F(SampleTimesTest, FindsTheFirstSampleFromAnyTimeOn) {
  std::mt19937 random(3);
  std::vector<float> gap;
  std::vector<float> uneven;
  std::vector<float> ties;
  float time = -2.0F;
  for (int i = 0; i < 700; ++i) {
    gap.push_back(static_cast<float>(i < 300 ? i : i + 5000) / 64);
    uneven.push_back(time += static_cast<float>(random() % 1000) * static_cast<float>(random() % 1000));
    ties.push_back(static_cast<float>(i / 7));
  }
  for (const auto& row : {gap, uneven, ties, std::vector<float>{3}, std::vector<float>{4, 4, 4}}) {
    Take(row);
    ASSERT_TRUE(times.Sorted());
    const double width = row.back() - row.front() + 1.0;
    for (int k = -30; k < 330; ++k) {
      const double at = row.front() + width * k / 300;
      ASSERT_EQ(times.FirstFrom(at), FirstFromPlainly(at)) << at << " of " << row.size();
    }
    for (const float at : row) {
      ASSERT_EQ(times.FirstFrom(at), FirstFromPlainly(at)) << at;
    }
  }
}

TEST_F(SampleTimesTest, EvenTimesKeepDigitsThatRowZeroLost) {
  SetChannels(trial, {{0, 0, 0}}, 3000.0);
  trial.RebuildTimeColumn();
  times.Take(trial);
  EXPECT_EQ(times.At(2), 1.0 / 3000.0);
  trial.Data(3, 0) = 0.001F;  // no longer (i-1)/Rate
  times.Take(trial);
  EXPECT_EQ(times.At(2), static_cast<double>(1.0F / 3000.0F));
}

TEST_F(SampleTimesTest, TimesThatGoBackOrAreNoNumberAreNotSorted) {
  for (const float odd : {-1.0F, NAN, INFINITY, -INFINITY}) {
    Take({0, 1, odd, 3});
    EXPECT_FALSE(times.Sorted()) << odd;
  }
}

}  // namespace
}  // namespace velmora::test
