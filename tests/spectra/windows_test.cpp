#include "spectra/windows.hpp"

#include <gtest/gtest.h>

#include <numeric>

namespace velmora::test {
namespace {

// Over whole periods the cosines add up to nothing: the mean weight is the constant of the sum.
TEST(SpectralWindows, HaveTheMeansOfTheirFormulas) {
  struct Case {
    std::int16_t type;
    double mean;
    double middle;
  };
  for (const Case& c : {Case{0, 1.0, 1.0}, Case{1, 0.42, 1.0}, Case{2, 0.35875, 1.0}, Case{3, 0.9, 1.0},
                        Case{4, 0.21557895, 1.000000003}, Case{5, 0.54, 1.0}, Case{6, 0.5, 1.0},
                        Case{7, 0.5, 1.0}, Case{-1, 1.0, 1.0}, Case{8, 1.0, 1.0}}) {
    const std::vector<double> weights = WindowWeights(WindowOf(c.type), 1000);
    EXPECT_NEAR(std::accumulate(weights.begin(), weights.end(), 0.0) / 1000, c.mean, 1e-9) << c.type;
    EXPECT_NEAR(weights[500], c.middle, 1e-9) << c.type;
    for (std::size_t i = 1; i < 1000; ++i) {
      ASSERT_NEAR(weights[i], weights[1000 - i], 1e-12) << c.type << ", " << i;
    }
  }
}

TEST(SpectralWindows, TakeAnyLength) {
  for (std::int16_t type = 0; type < static_cast<std::int16_t>(kSpectralWindows.size()); ++type) {
    for (const std::int64_t n : {1, 2, 3, 9, 10, 11}) {
      for (const double weight : WindowWeights(WindowOf(type), n)) {
        EXPECT_TRUE(weight > -0.08 && weight < 1.01) << type << ", " << n;
      }
    }
  }
  // r = 0.5 samples at either end: the first is 0, no other is touched.
  EXPECT_EQ(WindowWeights(WindowOf(3), 5), (std::vector<double>{0, 1, 1, 1, 1}));
  EXPECT_EQ(WindowWeights(WindowOf(7), 4), (std::vector<double>{0, 0.5, 1, 0.5}));
}

}  // namespace
}  // namespace velmora::test
