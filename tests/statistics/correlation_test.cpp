#include "statistics/correlation.hpp"

#include <numeric>

#include "support/signals.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

struct CorrelationTest : TableTest {
  void Correlate(std::vector<int> channels) {
    questions.FillForm({});
    RunPicking("statistics.correlation", std::move(channels));
  }
};

// x = 1..5, y = 2, 1, 4, 3, 5: S(x,y) = 8, S(x,x) = S(y,y) = 10.
TEST_F(CorrelationTest, ByHand) {
  SetChannels(trial, {{1, 2, 3, 4, 5}, {2, 1, 4, 3, 5}, {7, 7, 7, 7, 7}, {10, 20, 20, 40, 30}});
  Correlate({1, 2, 3, 4});
  const ResultTable& table = Table("frmCorrelation");
  ASSERT_EQ(table.rows.size(), 6U);
  ExpectCells(table, 0, {{"r", 0.8}, {"r squared", 0.64}, {"t", 0.8 * std::sqrt(3 / 0.36)}}, 1e-15);
  EXPECT_DOUBLE_EQ(Cell(table, 0, "95% low"), std::tanh(std::atanh(0.8) - 1.959963984540054 / std::sqrt(2)));
  EXPECT_DOUBLE_EQ(Cell(table, 0, "Spearman"), 0.8);  // they are ranks already
  // r1(x) = (2 + 0 + 0 + 2) / 10, r1(y) = (2 - 2 + 0 + 0) / 10.
  EXPECT_DOUBLE_EQ(Cell(table, 0, "n eff."), 5);
  ExpectCells(table, 1, {{"r", NAN}, {"n", 5}});  // constant
  // Ranks 1, 2.5, 2.5, 5, 4 against 1 to 5: S = 8.5, of squares 9.5 and 10.
  EXPECT_DOUBLE_EQ(Cell(table, 2, "Spearman"), 8.5 / std::sqrt(95.0));
  const ResultTable& matrix = Table("frmCorrelationMatrix");
  EXPECT_DOUBLE_EQ(std::get<double>(matrix.rows[1][1]), 0.8);
  EXPECT_EQ(std::get<double>(matrix.rows[0][1]), 1);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(matrix.rows[2][3]));
  EXPECT_EQ(matrix.columns, (Texts{"Label", "00", "01", "02", "03"}));
}

// Eight samples: with 6 degrees of freedom the probability has a closed form in r (Abramowitz and
// Stegun, 26.7.4).
TEST_F(CorrelationTest, ProbabilityHasItsClosedForm) {
  const Samples x = {0.5F, 1.25F, -0.75F, 2.0F, 3.5F, 1.0F, -1.5F, 0.25F};
  const Samples y = {1.0F, 0.5F, -0.25F, 1.75F, 2.5F, 1.5F, -0.5F, -1.0F};
  SetChannels(trial, {x, y});
  Correlate({1, 2});
  const ResultTable& table = Table("frmCorrelation");
  const double r = Cell(table, 0, "r");
  const double rest = 1 - r * r;
  EXPECT_NEAR(Cell(table, 0, "p"), 1 - r * (1 + rest / 2 + rest * rest * 3 / 8), 1e-13);
  EXPECT_NEAR(Cell(table, 0, "95% high"), std::tanh(std::atanh(r) + 1.959963984540054 / std::sqrt(5)), 1e-13);
  // Ranks 4 6 2 7 8 5 1 3 and 5 4 3 7 8 6 2 1: 1 - 6 sum d^2 / (n (n^2 - 1)), sum d^2 = 12.
  EXPECT_NEAR(Cell(table, 0, "Spearman"), 1 - 6 * 12.0 / (8 * 63), 1e-14);
}

// Two smooth curves: hundreds of samples that are worth a handful.
TEST_F(CorrelationTest, SmoothCurvesAreNotCertain) {
  const Samples a = Sampled(500, [](int i) { return std::sin(i * 0.01); });
  const Samples b = Sampled(500, [](int i) { return std::sin(i * 0.011 + 1); });
  SetChannels(trial, {a, b});
  Correlate({1, 2});
  const ResultTable& table = Table("frmCorrelation");
  EXPECT_LT(Cell(table, 0, "p"), 1e-6);
  ExpectCells(table, 0, {{"n eff.", 2}, {"p (autocorr.)", NAN}});
}

TEST_F(CorrelationTest, PairsUseTheSamplesThatBothHave) {
  SetChannels(trial, {{1, 2, kNan, 4, 5, 9}, {2, 1, 8, 3, 5, kNan}, {1, 2, 3, 4, 5, 6}});
  Correlate({1, 2, 3});
  const ResultTable& table = Table("frmCorrelation");
  EXPECT_EQ(Cell(table, 0, "n"), 4);
  // 1, 2, 4, 5 against 2, 1, 3, 5: S = 8, of squares 10 and 8.75.
  EXPECT_DOUBLE_EQ(Cell(table, 0, "r"), 8 / std::sqrt(87.5));
  ExpectCells(table, 1, {{"n", 5}, {"Spearman", 1}});
}

TEST_F(CorrelationTest, TakesTwoChannelsAndTwoSamples) {
  SetChannels(trial, {{1, 2, 3}, {4, 5, 6}});
  RunPicking("statistics.correlation", {1});
  EXPECT_EQ(LastBox(), "Too Few Channels Selected|You must choose at least 2 channels.");
  SetChannels(trial, {{1}, {4}});
  RunPicking("statistics.correlation", {1, 2});
  EXPECT_EQ(LastBox(), "Too Few Data|Too few data points.");
  SetChannels(trial, {{1, 3}, {4, 5}});
  Correlate({1, 2});
  ExpectCells(Table("frmCorrelation"), 0, {{"r", 1}, {"p", NAN}});
}

TEST_F(CorrelationTest, EveryVectorWidthGivesTheBitsOfThePlainLoop) {
  SetChannels(trial, NoiseChannels(13, 333));
  ChannelList all(13);
  std::iota(all.begin(), all.end(), 1);
  const auto plain = CorrelatePairs(trial, all, {2, 333}, {}, std::nullopt);
  ASSERT_EQ(plain.size(), 78U);
  for (const SimdLevel level : MachineSimdLevels()) {
    const auto fast = CorrelatePairs(trial, all, {2, 333}, {}, level);
    for (std::size_t k = 0; k < plain.size(); ++k) {
      EXPECT_EQ(fast[k].r, plain[k].r) << k;
      EXPECT_EQ(fast[k].spearman, plain[k].spearman) << k;
    }
  }
}

}  // namespace
}  // namespace velmora::test
