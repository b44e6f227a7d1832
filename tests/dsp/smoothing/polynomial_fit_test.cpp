#include "dsp/smoothing/polynomial_fit.hpp"

#include <cmath>
#include <numeric>

#include "dsp/filters/coefficient_form.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using Values = std::vector<double>;

Values Times(int count, double step) {
  Values x;
  for (int i = 0; i < count; ++i) {
    x.push_back(i * step);
  }
  return x;
}

TEST(PolynomialFit, FindsThePolynomialThatIsThere) {
  const Values x = Times(5000, 0.001);  // several blocks
  Values y;
  for (const double t : x) {
    y.push_back(2.0 - 3.0 * t + 0.5 * t * t - 0.25 * t * t * t);
  }
  const PolynomialFit fit = FitPolynomial(x, y, 5);
  const Values expected = {2.0, -3.0, 0.5, -0.25, 0.0, 0.0};
  ASSERT_EQ(fit.coefficients.size(), expected.size());
  for (std::size_t p = 0; p < expected.size(); ++p) {
    EXPECT_NEAR(fit.coefficients[p], expected[p], 1e-11) << p;
  }
  EXPECT_LT(fit.meanSquaredError, 1e-24);
}

// The regression line in closed form, and the weights of Savitzky and Golay (Anal. Chem. 36, 1964,
// table I) for the middle of five points on a parabola: (-3, 12, 17, 12, -3)/35.
TEST(PolynomialFit, LineAndParabolaAgreeWithTheirClosedForms) {
  const Values x = {0.3, 1.1, 1.9, 4.0, 7.5, 8.25};
  const Values y = {1.0, -2.0, 3.5, 0.25, 9.0, -4.0};
  const double n = 6;
  const double sx = std::accumulate(x.begin(), x.end(), 0.0);
  const double sy = std::accumulate(y.begin(), y.end(), 0.0);
  const double sxx = std::inner_product(x.begin(), x.end(), x.begin(), 0.0);
  const double sxy = std::inner_product(x.begin(), x.end(), y.begin(), 0.0);
  const double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
  const PolynomialFit line = FitPolynomial(x, y, 1);
  EXPECT_NEAR(line.coefficients[1], slope, 1e-13);
  EXPECT_NEAR(line.coefficients[0], (sy - slope * sx) / n, 1e-13);
  double squares = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    squares += std::pow(y[i] - (sy - slope * sx) / n - slope * x[i], 2);
  }
  EXPECT_NEAR(line.meanSquaredError, squares / n, 1e-12);
  EXPECT_NEAR(FitPolynomial(x, y, 0).coefficients[0], sy / n, 1e-14);

  const Values five = {4.0, -1.0, 2.5, 8.0, 0.5};
  const double middle = (-3 * five[0] + 12 * five[1] + 17 * five[2] + 12 * five[3] - 3 * five[4]) / 35;
  EXPECT_NEAR(FitPolynomial(Times(5, 0.01), five, 2).fitted[2], middle, 1e-13);
}

TEST(PolynomialFit, HighOrdersAndMoreTermsThanPoints) {
  const Values x = Times(1001, 0.01);
  Values y;
  for (const double t : x) {
    y.push_back(std::cos(3.0 * t));
  }
  const PolynomialFit fit = FitPolynomial(x, y, 45);
  for (std::size_t i = 0; i < x.size(); ++i) {
    ASSERT_NEAR(fit.fitted[i], y[i], 1e-11) << i;
  }
  const Values few = {1.0, -2.0, 7.0, 0.5};
  for (const int order : {3, 4, 12}) {
    const PolynomialFit through = FitPolynomial(Times(4, 0.25), few, order);
    for (std::size_t i = 0; i < few.size(); ++i) {
      EXPECT_NEAR(through.fitted[i], few[i], 1e-12) << order;
    }
  }
  EXPECT_NEAR(FitPolynomial(Values(4, 0.0), few, 2).fitted[0], 1.625, 1e-14) << "no time passes: the mean";
}

struct PolynomialCommand : CommandTest {
  const Samples x = {0, 1, 4, 9, 16, 99, 36, 49};

  void SetUp() override {
    SetChannels(trial, {x, x, x}, 1.0);
    workbench.chooser.ChanSelected[1] = true;  // left behind by a picker
  }
};

TEST_F(PolynomialCommand, FitsEachChannelOfItsOwnOrder) {
  trial.ChanLabel[2] = "Knee";
  trial.TrialName = "walk";
  questions.PickValues({{1, "1"}, {2, "2"}});
  questions.boxAnswers = {Button::Yes, Button::No};
  ResultTable viewed;
  questions.formAnswers.emplace_back([&](Form& form) {
    viewed = form.Tables().at(0);
    return std::string("Next");
  });
  Run("smooth.polynomial");
  EXPECT_EQ(questions.boxes.back().title, "Fit or View Coefficients for channel 01  Knee");
  EXPECT_EQ(viewed.title, "walk  01  Knee");
  ASSERT_EQ(viewed.rows.size(), 3U);
  EXPECT_EQ(std::get<std::string>(viewed.rows[2][0]), "    + t^2 x ");
  EXPECT_EQ(std::get<double>(workbench.results.ResultTables.at(0).rows[2][1]),
            std::get<double>(viewed.rows[2][1]));
  // Mean of x 26.75, of i 3.5; sum of (i - 3.5)(x - 26.75) is 405 over a sum of squares of 42.
  EXPECT_FLOAT_EQ(trial.Data(1, 1), static_cast<float>(26.75 - 3.5 * 405.0 / 42.0));
  EXPECT_FLOAT_EQ(trial.Data(8, 1), static_cast<float>(26.75 + 3.5 * 405.0 / 42.0));
  EXPECT_NE(trial.Data(6, 2), 99.0F) << "No shows the coefficients and fits all the same";
  EXPECT_EQ(Channel(trial, 3), x);
  EXPECT_TRUE(trial.FileChanged);
}

TEST_F(PolynomialCommand, RangesCancelAndTheSelectionBefore) {
  SetCursors(2, 4);
  questions.PickValues({{1, "99"}, {2, "1"}});
  questions.boxAnswers = {Button::Yes, Button::Yes, Button::Cancel};
  Run("smooth.polynomial");
  EXPECT_EQ(questions.boxes[0].title, "Fit between Cursors");
  EXPECT_EQ(workbench.results.ResultTables.at(0).rows.size(), 2U);
  EXPECT_EQ(Channel(trial, 1), x) << "three points on the parabola through them";
  EXPECT_EQ(Channel(trial, 2), x) << "cancelled";

  questions.PickValues({{2, "1"}});
  questions.boxAnswers = {Button::Yes};
  Run("smooth.spline");
  EXPECT_EQ(questions.boxes.back().title, "Fit Spline Data");
  Samples fitted = x;  // 1, 4, 9: the mean is 14/3 and the slope 4
  fitted[1] = 2.0F / 3;
  fitted[2] = 14.0F / 3;
  fitted[3] = 26.0F / 3;
  for (std::int64_t i = 1; i <= 8; ++i) {
    EXPECT_FLOAT_EQ(trial.Data(i, 2), fitted[static_cast<std::size_t>(i - 1)]) << i;
  }

  SetUp();
  trial.Data(3, 1) = std::nanf("");
  questions.PickValues({{1, "1"}, {2, "5000"}});
  questions.boxAnswers = {Button::Cancel};  // for the second: the first has none
  Run("smooth.polynomial");
  EXPECT_EQ(workbench.report.warnings.size(), 1U) << "not finite";

  workbench.chooser.ChanSelected.fill(false);
  questions.boxAnswers = {Button::Yes};
  RunTyping("smooth.polynomial", {{2, "1"}});
  EXPECT_EQ(Channel(trial, 3), x);
}

}  // namespace
}  // namespace velmora::test
