#include <cmath>
#include <limits>
#include <numeric>

#include "statistics/descriptive.hpp"
#include "statistics/order_statistics.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct LevelTest : TableTest {};

TEST_F(LevelTest, MeansByHand) {
  SetChannels(trial, {{2, -1, 5, 5}, {1, 1, 1, 1}, {kNan, 3, kInfinity, 4}, {kNan, kNan, kNan, kNan}}, 10);
  questions.FillForm({});
  RunPicking("statistics.descriptive", {1, 2, 3, 4});
  const ResultTable& table = Table("frmMeans");
  EXPECT_TRUE(table.title.ends_with("(standard deviations with n-1)"));
  const double deviation = std::sqrt(24.75 / 3);
  ExpectCells(table, 0, {{"n", 4}, {"Mean", 2.75}, {"Std.Dev.", deviation}, {"Std.Err.", deviation / 2}});
  ExpectCells(table, 0, {{"Minimum", -1}, {"Range", 6}, {"RMS", std::sqrt(55.0 / 4)}});
  // Of two largest the first.
  ExpectCells(table, 0, {{"Time of min.", 0.1F}, {"Time of max.", 0.2F}});
  ExpectCells(table, 1, {{"Coeff. var'n", 0}});
  // What is no number is left out.
  ExpectCells(table, 2, {{"n", 2}, {"Mean", 3.5}, {"Maximum", 4}});
  ExpectCells(table, 3, {{"n", 0}, {"Mean", NAN}});
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(workbench.report.deeds.back().what, "Mean, minimum and maximum over samples 1 to 4");
}

TEST_F(LevelTest, MediansByHand) {
  SetChannels(trial, {{10, 3, 1, 4, 2}, {7, 7, 7, 7, 7}, {kNan, 2, kNan, kNan, 4}}, 10);
  trial.ChanUnits[0] = "%";
  questions.formAnswers.emplace_back([](Form& form) {
    EXPECT_EQ(form.FindField("EndTime")->units, "%");
    return std::string("Exit");
  });
  RunPicking("statistics.median", {1, 2, 3});
  const ResultTable& table = Table("frmMedians");
  EXPECT_TRUE(table.title.ends_with("(linear between order statistics)"));
  ExpectCells(table, 0, {{"25th %ile", 2}, {"Median", 3}, {"75th %ile", 4}, {"Interquartile", 2}});
  ExpectCells(table, 0, {{"Median abs.dev.", 1}, {"5th %ile", 1.2}});
  // d = 6, -1, -3, 0, -2 about the mean 4: m2 = 10, m3 = 36, m4 = 1394 / 5.
  EXPECT_DOUBLE_EQ(Cell(table, 0, "Skewness"), 36 / std::pow(10, 1.5));
  EXPECT_DOUBLE_EQ(Cell(table, 0, "Kurtosis"), 1394.0 / 5 / 100 - 3);
  ExpectCells(table, 1, {{"Median abs.dev.", 0}, {"Skewness", NAN}});
  ExpectCells(table, 2, {{"n", 2}, {"Median", 3}});
}

// NIST StRD NumAcc3: 1000000.2, then 1000000.1 and 1000000.3 by turns, 1001 in all; in 32 bits those are
// 1000000.1875, .125 and .3125, whose mean and deviation follow from the counts.
TEST_F(LevelTest, AccuracyOfNumbersFarFromZero) {
  std::vector<float> samples{1000000.2F};
  for (int k = 0; k < 500; ++k) {
    samples.push_back(1000000.1F);
    samples.push_back(1000000.3F);
  }
  SetChannels(trial, {samples});
  const Descriptive of = DescribeChannels(trial, {1}, {1, 1001}).front();
  const double mean = (0.1875 + 500 * (0.125 + 0.3125)) / 1001;
  const auto squares = [mean](double x) { return (x - mean) * (x - mean); };
  const double sum = squares(0.1875) + 500 * (squares(0.125) + squares(0.3125));
  EXPECT_NEAR(of.mean, 1000000 + mean, 1e-9);
  EXPECT_NEAR(of.deviation.value(), std::sqrt(sum / 1000), 1e-9);
}

TEST_F(LevelTest, EveryVectorWidthGivesTheBitsOfThePlainLoop) {
  auto channels = NoiseChannels(19, 777);
  channels[3][100] = kNan;
  channels[17][776] = -kInfinity;
  channels[18][0] = kInfinity;
  SetChannels(trial, channels);
  ChannelList all(19);
  std::iota(all.begin(), all.end(), 1);
  const SampleRange range{3, 777};
  const auto fields = [](const Descriptive& of) {
    return std::tie(of.count, of.mean, of.deviation, of.minimum, of.minimumAt, of.maximumAt, of.rms);
  };
  const auto plain = DescribeChannels(trial, all, range, {}, std::nullopt);
  const auto moments = MomentsOf(trial, all, range, {}, std::nullopt);
  EXPECT_EQ(plain[3].count, 774);
  EXPECT_EQ(plain[18].count, 775);
  for (const SimdLevel level : MachineSimdLevels()) {
    const auto fast = DescribeChannels(trial, all, range, {}, level);
    const auto fastMoments = MomentsOf(trial, all, range, {}, level);
    for (std::size_t k = 0; k < all.size(); ++k) {
      EXPECT_EQ(fields(fast[k]), fields(plain[k])) << k;
      EXPECT_EQ(fastMoments[k].third, moments[k].third);
      EXPECT_EQ(fastMoments[k].fourth, moments[k].fourth);
    }
  }
}

TEST_F(LevelTest, SelectionFindsWhatSortingFinds) {
  const auto holds = [](const std::vector<float>& samples) {
    const auto fields = [](const OrderStatistics& of) {
      return std::tuple(of.median, of.p5, of.p25, of.p75, of.p95, of.medianDeviation);
    };
    EXPECT_EQ(fields(OrderBySelection(samples)), fields(OrderBySorting(samples)));
  };
  std::vector<float> noise = NoiseChannels(1, 50001)[0];
  holds(noise);
  for (float& x : noise) {
    x = 1000 + x / 1024;  // all share their first digits
  }
  holds(noise);
  for (float& x : noise) {
    x = std::round(x * 4) / 4;  // few values
  }
  holds(noise);
  std::vector<float> zeros(30000, 0.0F);
  for (std::size_t k = 0; k < zeros.size(); k += 2) {
    zeros[k] = -0.0F;
  }
  holds(zeros);
  holds({3});
  holds({-std::numeric_limits<float>::max(), std::numeric_limits<float>::max()});
}

TEST_F(LevelTest, GraphsSayWhichSamples) {
  SetChannels(trial, {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}}, 10);
  questions.FillForm({{"channels 1", "true"}});
  Run("graph.single");
  ASSERT_NE(workbench.view, nullptr);
  Run("cursor.two");
  workbench.view->MoveCursor(1, 0.2);
  workbench.view->MoveCursor(2, 0.5);
  const auto shown = [this](const char* key, const char* table, const char* head) {
    questions.FillForm({});
    workbench.view->PressKey({.name = key});
    return Cell(Table(table), 0, head);
  };
  EXPECT_EQ(shown("D", "frmMeans", "Mean"), 4.5);
  EXPECT_EQ(shown("M", "frmMedians", "n"), 4);
  EXPECT_EQ(shown("I", "frmIntegral", "Sum"), 18);
  EXPECT_EQ(shown("E", "frmEMGstats", "Abs. Sum"), 18);
  questions.FillForm({});
  Run("all-stats.emg");
  EXPECT_EQ(Cell(Table("frmEMGstats"), 0, "Sum"), 55);
  questions.FillForm({}, "Median stats.");  // and from there over the same samples, then out of both
  questions.FillForm({});
  questions.FillForm({});
  Run("statistics.all-descriptive");
  EXPECT_EQ(Cell(Table("frmMeans"), 0, "n"), 10);
  EXPECT_EQ(Cell(Table("frmMedians"), 0, "n"), 10);
  SetCursors(2, 4);
  questions.boxAnswers = {Button::Yes};
  questions.FillForm({});
  Run("statistics.emg");
  EXPECT_EQ(workbench.graph.StatLo, 2);
  EXPECT_EQ(Cell(Table("frmEMGstats"), 0, "Sum"), 9);
}

TEST_F(LevelTest, LongWorkCanBeEnded) {
  SetChannels(trial, NoiseChannels(1, 2'000'001));
  questions.onProgress = [](ProgressPanel& panel) { panel.PressCancel(); };
  Run("statistics.median");
  EXPECT_TRUE(questions.formNames.empty());
  EXPECT_TRUE(workbench.results.ResultTables.empty());
  EXPECT_TRUE(workbench.report.deeds.empty());
}

}  // namespace
}  // namespace velmora::test
