// Residual analysis: the cut-offs side by side are the low-pass run again and again; a made curve's line; the
// published cut-off of a filmed movement.
#include "dsp/design/residuals.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "core/text/numbers.hpp"
#include "dsp/filters/recursive_filter.hpp"
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
  EXPECT_NEAR(line->cutoff, 4 + 1.2 / 1.3, 1e-12);
  EXPECT_EQ(FindResidualLine(cutoffs, curve, 0.99, 20)->first, 20U);
  EXPECT_FALSE(FindResidualLine(cutoffs, curve, 0.99, 35)) << "six points are too few";
  EXPECT_FALSE(FindResidualLine(cutoffs, std::vector<double>(41, 0.0), 0.99, 0)) << "a constant channel";
}

// Vint and Hinrichs 1996 print Pezzack's angle and the acceleration measured beside it.
TEST(Residuals, PublishedCutOffOfAFilmedMovement) {
  const auto path = Recording("reference/Pezzack.txt");
  if (!path) {
    GTEST_SKIP() << "no recordings here";
  }
  std::ifstream file(*path);
  Samples raw;
  std::vector<double> acceleration;
  for (std::string line; std::getline(file, line);) {
    std::istringstream cells(line);
    double time = 0;
    double angle = 0;
    double noisy = 0;
    double measured = 0;
    if (cells >> time >> angle >> noisy >> measured) {
      raw.push_back(static_cast<float>(angle));
      acceleration.push_back(measured);
    }
  }
  constexpr double dt = 0.0201;
  Trial trial;
  SetChannels(trial, {raw}, 1 / dt);
  const double highest = 0.95 * std::pow(std::sqrt(2.0) - 1, 0.25) * trial.Rate / 2;
  const std::vector<float> cutoffs = ResidualCutoffs(trial.Rate / 200, highest, 100);
  const auto line = FindResidualLine(cutoffs, ResidualCurve(trial, 1, {1, trial.NData}, cutoffs), 0.99, 0);
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->cutoff, 5.6, 0.05);
  LowPassChannel(trial, 1, {1, trial.NData},
                 {.Cutoff = static_cast<float>(line->cutoff),
                  .Padding = RoundHalfEven32(trial.NData / 5.0),
                  .IsZeroLag = true});
  double sum = 0;
  for (std::int32_t i = 2; i < trial.NData; ++i) {
    const double second =
        (double{trial.Data(i - 1, 1)} - 2 * double{trial.Data(i, 1)} + trial.Data(i + 1, 1)) / (dt * dt);
    const double away = second - acceleration[static_cast<std::size_t>(i - 1)];
    sum += away * away;
  }
  EXPECT_NEAR(std::sqrt(sum / (trial.NData - 2)), 4.22, 0.02);
}

}  // namespace
}  // namespace velmora::test
