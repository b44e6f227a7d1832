// Residual analysis: the cut-offs side by side are the low-pass run again and again; a made curve's line; the
// published cut-off of a filmed movement.
#include "dsp/design/residuals.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "support/number_rows.hpp"
#include "support/recordings.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

TEST(Residuals, CutOffsSideBySideAreTheLowPassRunAgainAndAgain) {
  for (const std::int64_t samples : {20, 333}) {
    Trial trial;
    SetChannels(trial, NoiseChannels(2, samples), 100);
    const std::vector<float> cutoffs = ResidualCutoffs(0.5, 38, 70);
    ASSERT_EQ(cutoffs.size(), 71U);
    EXPECT_EQ(cutoffs.back(), 38.0F);
    const SampleRange range{3, static_cast<std::int32_t>(samples) - 2};
    const std::vector<double> plain = ResidualCurvePlain(trial, 2, range, cutoffs);
    for (const SimdLevel level : MachineSimdLevels()) {
      EXPECT_EQ(ResidualCurve(trial, 2, range, cutoffs, level), plain);
    }
  }
}

// A curve that falls steeply to 5 Hz and then along 2 - 0.02 f: at 0 Hz the line is 2, which the curve, 12 -
// 2 f before, reaches at 5 Hz... or a little before its knee, at (12 - 2)/2.
TEST(Residuals, TheLineLeadsToTheCutOff) {
  std::vector<float> cutoffs;
  std::vector<double> curve;
  for (int f = 0; f <= 40; ++f) {
    cutoffs.push_back(static_cast<float>(f));
    curve.push_back(std::max(12 - 2.2 * f, 2 - 0.02 * f));
  }
  const auto line = FindResidualLine(cutoffs, curve, 0.9999, 0);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->first, 5U);
  EXPECT_NEAR(line->atZero, 2, 1e-12);
  EXPECT_NEAR(line->slope, -0.02, 1e-12);
  // Between 4 Hz, 3.2, and 5 Hz, 1.9.
  EXPECT_NEAR(line->cutoff.value(), 4 + 1.2 / 1.3, 1e-12);
  EXPECT_EQ(FindResidualLine(cutoffs, curve, 0.99, 20)->first, 20U);
  EXPECT_FALSE(FindResidualLine(cutoffs, curve, 0.99, 35)) << "six points are too few";
  EXPECT_FALSE(FindResidualLine(cutoffs, std::vector<double>(41, 0.0), 0.99, 0)) << "a constant channel";
}

// The angle of Pezzack, as Vint and Hinrichs print it (1996).
TEST(Residuals, PublishedCutOffOfAFilmedMovement) {
  const auto path = Recording("reference/Pezzack.txt");
  if (!path) {
    GTEST_SKIP() << "no recordings here";
  }
  Trial trial;
  SetFrom(
      trial, NumbersOf(*path), [](const auto& row) { return Samples{static_cast<float>(row[1])}; },
      1 / 0.0201);
  const double highest = 0.95 * std::pow(std::sqrt(2.0) - 1, 0.25) * trial.Rate / 2;
  const std::vector<float> cutoffs = ResidualCutoffs(trial.Rate / 200, highest, 100);
  const auto line = FindResidualLine(cutoffs, ResidualCurve(trial, 1, {1, trial.NData}, cutoffs), 0.99, 0);
  ASSERT_TRUE(line);
  // What that leaves of the acceleration stands in recursive_filter_test.
  EXPECT_NEAR(line->cutoff.value(), 5.6, 0.05);
}

}  // namespace
}  // namespace velmora::test
