#include "dsp/math/prediction_ellipse.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace velmora::test {
namespace {

using Values = std::vector<double>;

TEST(PredictionEllipse, AxesFollowTheTableOfF) {
  // Variances 8/3 and 2/3; F(0.95; 2, 2) of the tables is 19.00, so k = 2 * 5 * 3/(4 * 2) * 19.
  const auto four = PredictionEllipse95(Values{12, 8, 10, 10}, Values{5, 5, 6, 4});
  ASSERT_TRUE(four);
  EXPECT_DOUBLE_EQ(four->x, 10);
  EXPECT_DOUBLE_EQ(four->y, 5);
  EXPECT_NEAR(four->major, std::sqrt(190.0), 1e-12);
  EXPECT_NEAR(four->minor, std::sqrt(47.5), 1e-12);
  EXPECT_NEAR(four->Area(), 95 * std::numbers::pi, 1e-11);
  EXPECT_EQ(four->angle, 0);
  // Twelve points on a cross: F(0.95; 2, 10) of the tables is 4.1028.
  const auto twelve = PredictionEllipse95(Values{1, -1, 1, -1, 1, -1, 0, 0, 0, 0, 0, 0},
                                          Values{0, 0, 0, 0, 0, 0, 3, -3, 3, -3, 3, -3});
  ASSERT_TRUE(twelve);
  EXPECT_NEAR(twelve->minor, std::sqrt(6.0 / 11 * 2 * 13 * 11 / (12 * 10) * 4.1028), 1e-5);
  EXPECT_NEAR(twelve->major, 3 * twelve->minor, 1e-12);
  EXPECT_DOUBLE_EQ(twelve->angle, 90);
}

TEST(PredictionEllipse, HoldsNineteenOfTwentyPointsAndTurnsWithThem) {
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  const double turn = -25 * std::numbers::pi / 180;
  Values x;
  Values y;
  for (int i = 0; i < 20000; ++i) {
    const double a = 3 * normal(random);
    const double b = normal(random);
    x.push_back(4 + a * std::cos(turn) - b * std::sin(turn));
    y.push_back(-2 + a * std::sin(turn) + b * std::cos(turn));
  }
  const auto ellipse = PredictionEllipse95(x, y);
  ASSERT_TRUE(ellipse);
  EXPECT_NEAR(ellipse->angle, -25, 0.5);
  EXPECT_NEAR(ellipse->major / ellipse->minor, 3, 0.05);
  int inside = 0;
  const double across = std::cos(ellipse->angle * std::numbers::pi / 180);
  const double along = std::sin(ellipse->angle * std::numbers::pi / 180);
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double dx = x[i] - ellipse->x;
    const double dy = y[i] - ellipse->y;
    const double a = (dx * across + dy * along) / ellipse->major;
    const double b = (dy * across - dx * along) / ellipse->minor;
    inside += a * a + b * b <= 1 ? 1 : 0;
  }
  EXPECT_NEAR(inside, 19000, 100);
}

TEST(PredictionEllipse, OfPointsThatFillNoPlane) {
  EXPECT_FALSE(PredictionEllipse95(Values{}, Values{}));
  EXPECT_FALSE(PredictionEllipse95(Values{1, 2}, Values{3, 4}));
  const auto line = PredictionEllipse95(Values{1, 2, 3}, Values{2, 4, 6});
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->minor, 0, 1e-6);
  EXPECT_NEAR(line->angle, std::atan(2.0) * 180 / std::numbers::pi, 1e-12);
  const auto point = PredictionEllipse95(Values(5, 0.1), Values(5, 0.2));
  ASSERT_TRUE(point);
  EXPECT_NEAR(point->Area(), 0, 1e-25);
}

}  // namespace
}  // namespace velmora::test
