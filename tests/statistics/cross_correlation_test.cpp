#include "statistics/cross_correlation.hpp"

#include <limits>
#include <numbers>

#include "support/signals.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

struct CrossCorrelationTest : TableTest {
  /// Returns the sentence of the view.
  std::string Correlate(const Edits& edits) {
    std::string words;
    AnswerForm(edits, "Compute");
    questions.formAnswers.emplace_back([&words](Form& form) {
      words = form.Tables().front().title;
      words = words.substr(0, words.find('\n'));
      graph_ = *form.Graph();
      return std::string("Exit");
    });
    Run("statistics.cross-correlation");
    return words;
  }
  inline static FormGraph graph_;
};

/// A bump around sample `middle` (from 0), the wider the smaller `sharpness`.
Samples Bump(double middle, double sign = 1, int count = 400) {
  return Sampled(count, [&](int i) { return sign * std::exp(-(i - middle) * (i - middle) / 200); });
}

// x = 0 3 0 0, y = 0 0 3 0: deviations -.75 2.25 -.75 -.75; r(1) = (.5625 + 5.0625 + .5625) / 6.75.
TEST_F(CrossCorrelationTest, SumsAndSignByHand) {
  const Samples x = {0, 3, 0, 0};
  const Samples y = {0, 0, 3, 0};
  const std::vector<double> r = CrossCorrelate(x, y, 3, LagNorm::WholeRange);
  ASSERT_EQ(r.size(), 7U);
  EXPECT_DOUBLE_EQ(r[3 + 1], 6.1875 / 6.75);
  EXPECT_DOUBLE_EQ(r[3 + 3], 0.5625 / 6.75);
  EXPECT_DOUBLE_EQ(r[3], (0.5625 - 2 * 1.6875 + 0.5625) / 6.75);
  EXPECT_EQ(FindLag(r)->samples, 1);
  const std::vector<double> overlap = CrossCorrelate(x, y, 3, LagNorm::Overlap);
  EXPECT_DOUBLE_EQ(overlap[3 + 1], 1);      // 0 3 0 over 0 3 0
  EXPECT_TRUE(std::isnan(overlap[3 + 3]));  // one sample
  EXPECT_TRUE(std::isnan(overlap[3 - 2]));  // 0 0 over 0 0
}

TEST_F(CrossCorrelationTest, SaysInWordsWhoFollowsWhom) {
  SetChannels(trial, {Bump(150), Bump(162.3), Bump(140, -1), Bump(150)}, 1000);
  EXPECT_EQ(Correlate({{"comX", "1"}, {"comY", "2"}}).substr(0, 22), "Y follows X by 0.012 s");
  EXPECT_EQ(Cell(Table("frmLag"), 0, "Value"), 12);
  EXPECT_NEAR(Cell(Table("frmLag"), 1, "Value"), 0.0123, 1e-4);  // between samples
  EXPECT_EQ(Table("frmCrossCorrelation").rows.size(), 201U);     // a quarter of 400 either way
  EXPECT_EQ(graph_.marks.size(), 1U);
  const std::string upside = Correlate({{"comX", "1"}, {"comY", "3"}});
  EXPECT_EQ(upside, "X follows Y by 0.010 s, turned upside down (r = -0.998).");
  EXPECT_EQ(Correlate({{"comX", "1"}, {"comY", "4"}}), "Y goes along with X (r = 1.000).");
  EXPECT_FALSE(trial.FileChanged);
  const Samples before = Channel(trial, 2);
  Correlate({{"comX", "1"}, {"comY", "2"}, {"chkShift", "yes"}});
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(trial.Data(1, 2), before[12]);
  EXPECT_EQ(trial.Data(400, 2), 0);
  EXPECT_EQ(Channel(trial, 1), Bump(150));
  EXPECT_EQ(workbench.report.deeds.back().what, "Shifted by -12 samples");
}

TEST_F(CrossCorrelationTest, BothWaysOfSummingAgree) {
  const auto noise = NoiseChannels(2, 3000);
  std::vector<double> x(noise[0].begin(), noise[0].end());
  std::vector<double> y(noise[1].begin(), noise[1].end());
  for (const std::int32_t lags : {1, 700, 2999}) {
    const std::vector<double> plain = LagSumsPlain(x, y, lags);
    const std::vector<double> fast = LagSumsByTransform(x, y, lags);
    ASSERT_EQ(fast.size(), plain.size());
    for (std::size_t k = 0; k < plain.size(); ++k) {
      EXPECT_NEAR(fast[k] / 1000, plain[k] / 1000, 1e-12);  // both spreads are about 1000
    }
  }
}

TEST_F(CrossCorrelationTest, OfEqualLagsTheSmallerAndThenTheNegative) {
  EXPECT_EQ(FindLag(std::vector<double>{0.5, 0, 0.5, 0, -0.5, 0, 0.5})->samples, -1);
  EXPECT_EQ(FindLag(std::vector<double>{0.5, 0, 0, -0.2, 0, 0.5, 0.5})->samples, 2);
  EXPECT_FALSE(FindLag(std::vector<double>{NAN, NAN, NAN}));
  // Every period of a sine is as good as the next but for rounding, and half a period upside down.
  const Samples sine = Sampled(4000, [](int i) { return std::sin(2 * std::numbers::pi * i / 200); });
  for (const std::int32_t lags : {210, 1000}) {  // plain sums, and the transform
    const std::optional<BestLag> lag = FindLag(CrossCorrelate(sine, sine, lags, LagNorm::Overlap));
    EXPECT_EQ(lag->samples, 0);
    EXPECT_LE(lag->r, 1.0);
  }
}

TEST_F(CrossCorrelationTest, LongWorkShowsAPanelAndCancelLeavesTheTrialAsItWas) {
  SetChannels(trial, NoiseChannels(2, 600'000), 1000);
  const Samples before = Channel(trial, 2);
  const auto correlate = [this] {
    AnswerForm({{"comX", "1"}, {"comY", "2"}, {"chkShift", "yes"}}, "Compute");
    AnswerForm({}, "Cancel");
    Run("statistics.cross-correlation");
  };
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Format() == "Correlating") {
      panel.PressCancel();
    }
  };
  correlate();
  EXPECT_EQ(questions.formNames, Texts(2, "frmCrossCorrelation")) << "offered again";
  EXPECT_TRUE(workbench.results.ResultTables.empty());
  EXPECT_TRUE(workbench.report.deeds.empty());
  EXPECT_EQ(Channel(trial, 2), before);
  int shown = 0;
  questions.onProgress = [&shown](ProgressPanel&) { ++shown; };
  correlate();
  EXPECT_GT(shown, 0);
  EXPECT_EQ(Table("frmCrossCorrelation").rows.size(), 300'001U);
}

TEST_F(CrossCorrelationTest, RefusesWhatHasNoLag) {
  SetChannels(trial, {{1, 2, 3, 4}, {5, 5, 5, 5}, {1, std::numeric_limits<float>::quiet_NaN(), 2, 3}}, 10);
  AnswerForm({{"comX", "1"}}, "Compute");
  AnswerForm({{"comY", "2"}}, "Compute");
  AnswerForm({{"comY", "3"}}, "Compute");
  AnswerForm({{"comY", "1"}, {"txtMaxLag", "0.4"}}, "Compute");
  AnswerForm({}, "Cancel");
  Run("statistics.cross-correlation");
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Too Few Channels Selected: You must choose at least 2 channels.",
                   "Constant Channel: Channel 01 does not vary between samples 1 and 4.",
                   "Missing Data: Channel 02 has 1 samples that are no numbers between samples 1 and 4.",
                   "Invalid Entry: Largest lag (s) must be from 0.1 to 0.3."}));
  workbench.time.Base = TimeBase::Percentage;
  Run("statistics.cross-correlation");
  EXPECT_EQ(questions.boxes.back().title, "Invalid Sampling Rate or Timebase");
  workbench.time.Base = TimeBase::Seconds;
  SetChannels(trial, {{1}, {2}});
  Run("statistics.cross-correlation");
  EXPECT_EQ(questions.boxes.back().title, "Too Few Data");
}

}  // namespace
}  // namespace velmora::test
