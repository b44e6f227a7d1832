// Landings and strikes: peaks, loading rates, impulses.
#include "impact/strikes/strikes.hpp"

#include <cmath>

#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

using Numbers = std::vector<double>;

TEST(Strikes, RatesByHand) {
  // The published example, from its first sample on: both rates are 1000 a second.
  const Numbers rise = {0, 10, 20, 30, 40, 50, 25, 0};
  std::vector<Strike> found = FindStrikes(rise, {.contact = {.on = 0, .off = 0}}, 0.01);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].peak, 5);
  EXPECT_EQ(found[0].riseFrom, 1);
  EXPECT_EQ(found[0].riseTo, 4);
  EXPECT_DOUBLE_EQ(found[0].averageRate.value(), 1000);
  EXPECT_DOUBLE_EQ(found[0].largestRate.value(), 1000);
  EXPECT_DOUBLE_EQ(found[0].impulse, 1.75);
  EXPECT_FALSE(found[0].contact.whole);

  // An impact peak of 60 two samples behind the onset, a larger push-off later; a plateau counts from its
  // front.
  const Numbers step = {0, 0, 30, 50, 60, 60, 40, 70, 90, 90, 20, 0};
  const StrikeRule largest{.contact = {.on = 20, .off = 20}};
  found = FindStrikes(step, largest, 0.01);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].peak, 8) << "the first of equal ones";
  EXPECT_DOUBLE_EQ(found[0].mean, 510.0 / 9);
  EXPECT_DOUBLE_EQ(found[0].largestRate.value(), 3000) << "from 40 to 70, which the average does not see";
  EXPECT_DOUBLE_EQ(found[0].averageRate.value(), (70 - 50) / 0.04);
  StrikeRule first = largest;
  first.firstMaximumWithin = 3;
  EXPECT_EQ(FindStrikes(step, first, 0.01)[0].peak, 4);
  first.firstMaximumWithin = 1;
  EXPECT_EQ(FindStrikes(step, first, 0.01)[0].peak, 8) << "none so early: the largest";
  // A peak in the first sample has no rise.
  const Strike flat = FindStrikes(Numbers{0, 50, 40, 0}, largest, 0.01).at(0);
  EXPECT_FALSE(flat.averageRate);
  EXPECT_FALSE(flat.largestRate);
}

struct StrikesTest : AnalysisTest {
  StrikesTest() : AnalysisTest("impact.analysis") {}
  const ResultTable& Find(const Edits& edits) {
    Compute(edits);
    return Table("frmImpact");
  }
};

TEST_F(StrikesTest, ThresholdsByUnitsAndWhatThePageNames) {
  const Samples force = {0, 0, 15, 200, 400, 600, 500, 100, 0, 0, 0, 0, 0, 0, 0, 18, 300, 700, 0, 0};
  Samples down;
  for (const float x : force) {
    down.push_back(-x / 1000);
  }
  SetChannels(trial, {force, down}, 100);
  trial.ChanUnits[1] = "N";
  trial.ChanUnits[2] = "kN";
  trial.ChanLabel[1] = "Fz";
  const ResultTable* table =
      &Find({{"channels 1", "yes"}, {"txtMinDuration", "0"}, {"txtBodyWeight", "500"}});
  ASSERT_EQ(table->rows.size(), 2U);
  EXPECT_FLOAT_EQ(static_cast<float>(Cell(*table, 0, "Onset")), 0.03F);
  ExpectCells(*table, 0, {{"Threshold", 20}, {"Peak", 600}, {"Time to peak", 0.02}, {"Duration", 0.04}});
  ExpectCells(*table, 0, {{"Avg. rate", 20000}, {"Peak (BW)", 1.2}, {"Avg. rate (BW/s)", 40}});
  ExpectCells(*table, 1, {{"Impulse", 5}});
  EXPECT_EQ(std::get<std::string>(table->rows[1][12]), "yes");
  EXPECT_FALSE(trial.FileChanged);

  // 5 % of the largest of the other channel, which points down: 0.035 kN.
  table =
      &Find({{"channels 1", "no"}, {"channels 2", "yes"}, {"chkNegative", "yes"}, {"txtMinDuration", "0"}});
  ASSERT_EQ(table->rows.size(), 2U);
  EXPECT_NEAR(Cell(*table, 1, "Threshold"), 0.035, 1e-8);
  EXPECT_NEAR(Cell(*table, 1, "Peak"), 0.7, 1e-7);
  EXPECT_HAS(table->title, "turned upside down");
  // A moment is no force.
  trial.ChanUnits[1] = "N.m";
  table = &Find({{"channels 1", "yes"}, {"txtMinDuration", "0"}});
  EXPECT_DOUBLE_EQ(Cell(*table, 0, "Threshold"), 0.05 * 700);
  // A gap is bridged, and the release lies below the threshold.
  table = &Find({{"channels 1", "yes"}, {"txtMinGap", "0.1"}, {"txtRelease", "1"}, {"txtMinDuration", "0"}});
  ASSERT_EQ(table->rows.size(), 1U);
  EXPECT_DOUBLE_EQ(Cell(*table, 0, "Duration"), 0.14);
}

TEST_F(StrikesTest, RefusalsAndChannelsWithoutAnImpact) {
  SetChannels(trial, {Samples(50, 0.0F), Samples(50, -3.0F)}, 100);
  const ResultTable& none = Find({{"channels 1", "yes"}, {"channels 2", "yes"}});
  EXPECT_TRUE(none.rows.empty());
  ASSERT_EQ(questions.boxes.size(), 2U) << "nothing is at or above 5 % of zero, or of less";
  EXPECT_EQ(LastBox(), "No Impacts|Channel 01 has no value above zero, and so no impact.");
  EXPECT_EQ(Refused({}), "Too Few Channels Selected|You must choose at least 1 channel.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"txtThreshold", "5"}, {"txtRelease", "6"}}),
            "Invalid Entry|Release must be from 0 to 5.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"comClass", "60"}}).substr(0, 14), "Invalid Filter") << "100 Hz";
  SetChannels(trial, {{1, 2}}, 100);
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points.");
}

}  // namespace
}  // namespace velmora::test
