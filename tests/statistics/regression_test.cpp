#include "statistics/regression.hpp"

#include <limits>

#include "support/signals.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

// NIST StRD, Norris (linear, 36 observations): x, y.
const std::vector<std::pair<double, double>>& Norris() {
  static const std::vector<std::pair<double, double>> data = {
      {0.2, 0.1},     {337.4, 338.8}, {118.2, 118.1}, {884.6, 888.0}, {10.1, 9.2},    {226.5, 228.1},
      {666.3, 668.5}, {996.3, 998.5}, {448.6, 449.1}, {777.0, 778.9}, {558.2, 559.2}, {0.4, 0.3},
      {0.6, 0.1},     {775.5, 778.1}, {666.9, 668.8}, {338.0, 339.3}, {447.5, 448.9}, {11.6, 10.8},
      {556.0, 557.7}, {228.1, 228.3}, {995.8, 998.0}, {887.6, 888.8}, {120.2, 119.6}, {0.3, 0.3},
      {0.3, 0.6},     {556.8, 557.6}, {339.1, 339.3}, {887.2, 888.0}, {999.0, 998.5}, {779.0, 778.9},
      {11.1, 10.2},   {118.3, 117.6}, {229.2, 228.9}, {669.1, 668.4}, {448.9, 449.2}, {0.5, 0.2}};
  return data;
}

struct RegressionTest : AnalysisTest {
  RegressionTest() : AnalysisTest("statistics.regression") {}
};

TEST_F(RegressionTest, CertifiedValuesOfNorris) {
  std::vector<double> x;
  std::vector<double> y;
  for (const auto& [a, b] : Norris()) {
    x.push_back(a);
    y.push_back(b);
  }
  Regression fit;
  const std::vector<std::vector<double>> columns{x};
  ASSERT_EQ(FitRegression(columns, y, true, fit), RegressionTrouble::None);
  EXPECT_NEAR(fit.intercept->value, -0.262323073774029, 1e-11);
  EXPECT_NEAR(fit.slopes[0].value, 1.00211681802045, 1e-11);
  EXPECT_NEAR(fit.intercept->error.value(), 0.232818234301152, 1e-11);
  EXPECT_NEAR(fit.slopes[0].error.value(), 0.429796848199937E-03, 1e-11);
  EXPECT_NEAR(fit.r2.value(), 0.999993745883712, 1e-11);
  EXPECT_NEAR(fit.estimateError, 0.884796396144373, 1e-11);
  EXPECT_NEAR(fit.f.value(), 5436385.54079785, 1e-3);
  EXPECT_NEAR(fit.sse, 26.6173985294224, 1e-9);
}

TEST_F(RegressionTest, LinesByHandAndTheirAgreement) {
  SetChannels(trial, {{1, 2, 3, 4}, {3, 5, 7, 10}, {1, 0, 0, 1}}, 1);
  trial.ChanLabel[1] = "x";
  Compute({{"comY", "2"}, {"channels 1", "yes"}, {"chkFitted", "yes"}, {"chkResiduals", "yes"}});
  EXPECT_EQ(ShownCell(Table("frmRegression"), 1, 0), "x");
  // Means 2.5 and 6.25, S(x,y) = 11.5, S(x,x) = 5.
  EXPECT_NEAR(Cell(Table("frmRegression"), 0, "Coefficient"), 0.5, 1e-13);
  EXPECT_NEAR(Cell(Table("frmRegression"), 1, "Coefficient"), 2.3, 1e-14);
  EXPECT_NEAR(Cell(Table("frmRegressionFit"), 5, "Value"), 0.3, 1e-13);  // 26.75 - 11.5^2 / 5
  const double t = 2.3 / std::sqrt(0.15 / 5);  // with 2 degrees: p = 1 - t / sqrt(2 + t^2)
  EXPECT_NEAR(Cell(Table("frmRegression"), 1, "p"), 1 - t / std::sqrt(2 + t * t), 1e-12);
  EXPECT_NEAR(Cell(Table("frmRegressionFit"), 4, "Value"), 1 - t / std::sqrt(2 + t * t), 1e-12);  // the same
  EXPECT_EQ(Cell(Table("frmAgreement"), 0, "Value"), 3.75);
  EXPECT_DOUBLE_EQ(Cell(Table("frmAgreement"), 1, "Value"), std::sqrt(8.75 / 3));
  EXPECT_DOUBLE_EQ(Cell(Table("frmAgreement"), 3, "Value"), 3.75 + 1.96 * std::sqrt(8.75 / 3));
  EXPECT_EQ(Table("frmAgreement").rows.size(), 5U);
  EXPECT_EQ(Labels()[3], "Fitted");
  EXPECT_EQ(Labels()[4], "Residual");
  EXPECT_NEAR(trial.Data(4, 4), 9.7, 1e-6);
  EXPECT_NEAR(trial.Data(4, 5), 0.3, 1e-6);
  EXPECT_TRUE(trial.FileChanged);

  trial.FileChanged = false;
  Compute({{"comY", "2"}, {"channels 1", "yes"}, {"chkIntercept", "no"}});
  // S(x,y) / S(x,x) about 0: 74 / 30; R squared 74^2 / 30 / 183.
  EXPECT_NEAR(Cell(Table("frmRegression"), 0, "Coefficient"), 74.0 / 30, 1e-13);
  EXPECT_NEAR(Cell(Table("frmRegressionFit"), 0, "Value"), 74.0 * 74 / 30 / 183, 1e-13);
  EXPECT_FALSE(trial.FileChanged);

  Compute({{"comY", "2"}, {"channels 1", "no"}, {"channels 3", "yes"}, {"chkTime", "yes"}});
  // t = 0..3 and the third channel, which is even about its middle: the slope stays, and the channel takes
  // its part.
  EXPECT_NEAR(Cell(Table("frmRegression"), 1, "Coefficient"), 2.3, 1e-12);
  EXPECT_NEAR(Cell(Table("frmRegression"), 2, "Coefficient"), 0.5, 1e-12);
}

TEST_F(RegressionTest, LongWorkCanBeEnded) {
  SetChannels(trial, NoiseChannels(2, 600'000));
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Format() == "Fitting") {
      panel.PressCancel();
    }
  };
  AnswerForm({{"comY", "2"}, {"channels 1", "yes"}, {"chkFitted", "yes"}}, "Compute");
  AnswerForm({}, "Cancel");
  Run("statistics.regression");
  EXPECT_EQ(questions.formNames, Texts(2, "frmRegression")) << "offered again";
  EXPECT_TRUE(workbench.results.ResultTables.empty());
  EXPECT_TRUE(workbench.report.deeds.empty());
  EXPECT_EQ(trial.NChan, 2);
}

TEST_F(RegressionTest, RefusesWhatHasNoAnswer) {
  SetChannels(trial, {{1, 2, 3, 4}, {3, 5, 7, 10}, {2, 4, 6, 8}, {1, 1, 1, 1}});
  AnswerForm({}, "Compute");
  AnswerForm({{"comY", "2"}, {"channels 2", "yes"}}, "Compute");
  AnswerForm({{"channels 2", "no"}, {"channels 1", "yes"}, {"channels 3", "yes"}}, "Compute");
  AnswerForm({{"channels 3", "no"}, {"channels 4", "yes"}}, "Compute");
  AnswerForm({}, "Cancel");
  Run("statistics.regression");
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Too Few Channels Selected: You must choose at least 2 channels.",
                   "Channel Chosen Twice: The dependent channel cannot be one of the independent ones.",
                   "Channels Depend on Each Other: The regression has no single answer.  Take out one of the "
                   "channels.",
                   "Channels Depend on Each Other: The regression has no single answer.  Take out one of the "
                   "channels."}));
  SetChannels(trial, {{1, 2}, {3, 5}});
  EXPECT_EQ(Refused({{"comY", "2"}, {"channels 1", "yes"}}), "Too Few Data|Too few data points.");
  std::vector<std::vector<float>> full(64, Samples{1, 2, 4});
  SetChannels(trial, full);
  Refused({{"comY", "2"}, {"channels 1", "yes"}, {"chkFitted", "yes"}});
  EXPECT_EQ(questions.boxes.back().title, "No Free Channels");
  // The line is 3e38 (x - 2) over the first three; the fourth lies where no 32-bit number does.
  SetChannels(trial, {{1, 2, 3, 9}, {-3e38F, 0, 3e38F, 0}});
  trial.CursorLo = 1;
  trial.CursorHi = 3;
  questions.boxAnswers.push_back(Button::Yes);
  AnswerForm({{"comY", "2"}, {"channels 1", "yes"}, {"chkResiduals", "yes"}}, "Compute");
  Run("statistics.regression");
  EXPECT_EQ(questions.boxes.back().text, "The result for sample 4 is not a number that data can hold.");
  EXPECT_EQ(trial.NChan, 2);
}

TEST_F(RegressionTest, ALongColumnIsFittedByPartsAndMissingSamplesAreLeftOut) {
  const Samples x = Sampled(5000, [](int i) { return i; });
  Samples y = Sampled(5000, [](int i) { return 3 * i + 7; });
  y[17] = std::numeric_limits<float>::quiet_NaN();
  SetChannels(trial, {x, y});
  Compute({{"comY", "2"}, {"channels 1", "yes"}, {"chkFitted", "yes"}});
  EXPECT_NEAR(Cell(Table("frmRegression"), 0, "Coefficient"), 7, 1e-9);
  EXPECT_NEAR(Cell(Table("frmRegression"), 1, "Coefficient"), 3, 1e-12);
  EXPECT_EQ(Cell(Table("frmRegressionFit"), 6, "Value"), 4999);
  EXPECT_FLOAT_EQ(trial.Data(18, 3), 58);
}

}  // namespace
}  // namespace velmora::test
