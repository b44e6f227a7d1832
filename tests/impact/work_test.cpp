// Phases of powers, moments and forces.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "impact/phases/work_phases.hpp"
#include "impact/phases/work_units.hpp"
#include "support/signals.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

using Numbers = std::vector<double>;

double TrapezoidSum(const Numbers& x, double timeStep) {
  double sum = 0.0;
  for (std::size_t k = 1; k < x.size(); ++k) {
    sum += (x[k - 1] + x[k]) / 2;
  }
  return sum * timeStep;
}

double SumOf(const std::vector<WorkPhase>& phases) {
  return std::accumulate(phases.begin(), phases.end(), 0.0,
                         [](double sum, const WorkPhase& phase) { return sum + phase.integral; });
}

TEST(WorkPhases, HalvesOfASineAndCrossingsByHand) {
  // 1 Hz at 1000 Hz, no sample at 0
  const Numbers sine =
      Sampled<double>(2001, [](int i) { return std::sin(2 * std::numbers::pi * (i + 0.3) / 1000); });
  const std::vector<WorkPhase> halves = FindWorkPhases(sine, 1e-3);
  ASSERT_EQ(halves.size(), 5U);
  EXPECT_NEAR(halves[1].integral, -1 / std::numbers::pi, 2e-6) << "trapezoids are off by some dt squared";
  EXPECT_NEAR(halves[2].integral, 1 / std::numbers::pi, 2e-6);
  EXPECT_NEAR(halves[1].from, 499.7, 1e-4);
  EXPECT_EQ(halves[1].to, halves[2].from);
  EXPECT_NEAR(halves[2].peak, 1, 1e-5);
  EXPECT_EQ(halves[2].peakAt, 1250);
  EXPECT_NEAR(SumOf(halves), TrapezoidSum(sine, 1e-3), 1e-12);

  // 2 and -1 cross a third before the second; a zero inside a phase does not part it, two do.
  const Numbers by = {0, 2, -1, -1, 0, -3, 0, 0, 5, 0, 4};
  const std::vector<WorkPhase> phases = FindWorkPhases(by, 1);
  ASSERT_EQ(phases.size(), 3U);
  EXPECT_DOUBLE_EQ(phases[0].from, 0);
  EXPECT_DOUBLE_EQ(phases[0].to, 1 + 2.0 / 3);
  EXPECT_DOUBLE_EQ(phases[0].integral, 1 + 2.0 / 3);
  EXPECT_DOUBLE_EQ(phases[1].integral, -1.0 / 6 - 1 - 0.5 - 1.5 - 1.5);
  EXPECT_DOUBLE_EQ(phases[1].to, 6);
  EXPECT_EQ(phases[1].peak, -3);
  EXPECT_DOUBLE_EQ(phases[2].from, 7);
  EXPECT_DOUBLE_EQ(phases[2].to, 10);
  EXPECT_EQ(phases[2].peakAt, 8);
  EXPECT_TRUE(FindWorkPhases(Numbers(50, 0.0), 1).empty());
  EXPECT_TRUE(FindWorkPhases({}, 1).empty());
  EXPECT_EQ(RunningIntegral(Numbers{1, 3, -1}, 0.5), (Numbers{0, 1, 1.5}));
}

TEST(WorkPhases, OfNoiseAddUpToTheTrapezoidSum) {
  const Samples noise = NoiseChannels(1, 20000, 3)[0];
  const Numbers x(noise.begin(), noise.end());
  const std::vector<WorkPhase> phases = FindWorkPhases(x, 1);
  EXPECT_NEAR(SumOf(phases), TrapezoidSum(x, 1), 1e-9);
  for (std::size_t k = 1; k < phases.size(); ++k) {
    EXPECT_EQ(phases[k].from, phases[k - 1].to);
    EXPECT_LT(phases[k].integral * phases[k - 1].integral, 0);
  }
}

TEST(WorkUnits, JoulesOfWattsAndWattsOfMoments) {
  EXPECT_EQ(UnitsOverTime("W"), "J");
  EXPECT_EQ(UnitsOverTime("mW/kg"), "mJ/kg");
  EXPECT_EQ(UnitsOverTime("N.m"), "N.m.s");
  EXPECT_EQ(UnitsOverTime("Wb"), "Wb.s");
  EXPECT_EQ(UnitsOverTime(""), "s");
  EXPECT_EQ(PowerUnitsOf("N.m/kg"), "W/kg");
  EXPECT_EQ(PowerUnitsOf("Nmm"), "mW");
}

struct WorkTest : AnalysisTest {
  WorkTest() : AnalysisTest("integrate.work") {}
};

TEST_F(WorkTest, TablesTotalsAndTheRunningIntegral) {
  SetChannels(trial, {{9, 0, 4, -4, 0, 0, 2, 9}, {1, 1, 1, 1, 1, 1, 1, 1}}, 2);
  trial.ChanUnits[1] = "W";
  trial.ChanUnits[2] = "N.m";
  trial.ChanLabel[1] = "Knee";
  SetCursors(2, 7);
  questions.boxAnswers = {Button::Yes};
  Compute({{"channels 1", "yes"},
           {"channels 2", "yes"},
           {"txtSmallest", "0.02"},
           {"txtMass", "50"},
           {"chkIntegral", "yes"}});
  // 1.5 J, -1.5 J and 0.5 J of 50 kg: the last is too small for the list, not for the totals.
  const ResultTable& phases = Table("frmWork");
  ASSERT_EQ(phases.rows.size(), 3U);
  ExpectCells(phases, 0, {{"Integral", 1.5 / 50}, {"From", 0.5}, {"To", 1.25}}, 1e-17);
  ExpectCells(phases, 1, {{"Integral", -1.5 / 50}, {"Duration", 0.75}, {"Peak", -4.0 / 50}}, 1e-17);
  ExpectCells(phases, 1, {{"Peak at", 1.5}, {"Mean", -2.0 / 50}}, 1e-17);
  ExpectCells(phases, 2, {{"Integral", 2.5 / 50}}, 1e-17);
  const ResultTable& totals = Table("frmWorkTotals");
  ExpectCells(totals, 0, {{"Positive", 2.0 / 50}, {"Negative", -1.5 / 50}, {"Phases", 3}}, 1e-17);
  ExpectCells(totals, 0, {{"Net", 0.5 / 50}, {"Absolute", 3.5 / 50}}, 1e-17);
  EXPECT_EQ(std::get<std::string>(totals.rows[0].back()), "J/kg");
  EXPECT_EQ(std::get<std::string>(totals.rows[1].back()), "N.m.s/kg");
  EXPECT_EQ(phases.title, "1 smaller phase is not listed.\nPhases");
  EXPECT_EQ(Labels()[2], "Int. Knee");
  EXPECT_EQ(UnitsOfChannels()[2], "J/kg");
  EXPECT_EQ(Channel(trial, 3), (Samples{0, 0, 1 / 50.0F, 1 / 50.0F, 0, 0, 0.5F / 50, 0.5F / 50}))
      << "0 in front of the range, what was reached behind it";
  EXPECT_TRUE(trial.FileChanged);
}

TEST_F(WorkTest, RefusesWhatCannotBeIntegrated) {
  const std::string few = "Too Few Data|Too few data points to integrate.";
  SetChannels(trial, {{1, 2, 3, 4}}, 2);
  EXPECT_EQ(RefusedAtOnce(), few);
  SetChannels(trial, {{1, 2, kNan, 4, 5, 6, 7}}, 2);
  SetCursors(4, 7);
  questions.boxAnswers = {Button::Yes};
  EXPECT_EQ(RefusedAtOnce(), few);
  SetCursors(0, 0);
  EXPECT_EQ(Refused({{"channels 1", "no"}}), "Too Few Channels Selected|You must choose at least 1 channel.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}}),
            "Missing Data|Channel 00 has 1 samples that are no numbers between samples 1 and 7.");
  EXPECT_TRUE(workbench.results.ResultTables.empty());
  trial.Rate = 0;
  EXPECT_EQ(RefusedAtOnce(),
            "Invalid Sampling Rate or Timebase|Data not time based.  Processing cannot continue.");
  SetChannels(trial, NoiseChannels(64, 9), 10);
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"chkIntegral", "yes"}}).substr(0, 16), "No Free Channels");
  EXPECT_EQ(trial.NChan, 64);
  EXPECT_FALSE(trial.FileChanged);
}

}  // namespace
}  // namespace velmora::test
