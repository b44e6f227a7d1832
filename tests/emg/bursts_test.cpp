// Onsets and offsets of bursts, and co-contraction.
#include "emg/bursts/bursts.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "support/signals.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

using Bursts = std::vector<SignalBurst>;

TEST(SignalBursts, RunsAreJoinedBeforeTheShortOnesGo) {
  const std::vector<double> x = {0, 2, 0, 2, 2, 0, 0, 2, 0};
  EXPECT_EQ(FindSignalBursts(x, {.threshold = 1, .shortest = 3, .longestGap = 1}), (Bursts{{1, 4}}));
  EXPECT_EQ(FindSignalBursts(x, {.threshold = 1}), (Bursts{{1, 1}, {3, 4}, {7, 7}}));
  EXPECT_EQ(FindSignalBursts(x, {.threshold = 2, .longestGap = 2}), (Bursts{{1, 7}}))
      << "at the threshold is in";
  EXPECT_EQ(FindSignalBursts(x, {.threshold = 3}), Bursts{});
  // A burst that only just rises, and one that reaches the second threshold in two samples.
  const std::vector<double> y = {2, 2, 2, 0, 2, 5, 5, 2};
  EXPECT_EQ(FindSignalBursts(y, {.threshold = 1, .second = 4, .secondSamples = 2}), (Bursts{{4, 7}}));
  EXPECT_EQ(FindSignalBursts(y, {.threshold = 1, .second = 4, .secondSamples = 3}), Bursts{});
}

TEST(SignalBursts, RestIsTheQuietestStretch) {
  const std::vector<double> x = {5, 1, 1, 3, 0, 2, 1, 9};
  EXPECT_EQ(QuietestStretch(x, 3), 4U) << "the first of those that sum to 3";
  const MeanDeviation rest = MeanDeviationOf(std::span(x).subspan(4, 3));
  EXPECT_EQ(rest.mean, 1);
  EXPECT_EQ(rest.deviation, 1) << "n - 1";
}

TEST(SignalBursts, TheEnergyOperatorIsFlatOverATone) {
  constexpr double w = 0.3;
  const Samples tone = Sampled(50, [&](int i) { return 2 * std::sin(w * i); });
  Trial trial;
  SetChannels(trial, {tone}, 1000);
  for (const double e : EnvelopeOf(trial, 1, {1, 50}, {.teagerKaiser = true, .cutoff = 0})) {
    EXPECT_NEAR(e, std::pow(2 * std::sin(w), 2), 1e-6);
  }
}

struct Onsets : AnalysisTest {
  Onsets() : AnalysisTest("emg.onsets") {}

  // 2 s at 1000 Hz: rest of small noise, bursts from 0.5 to 0.8 s and from 1.2 to 1.6 s.
  void SetUp() override {
    Samples emg = NoiseChannels(1, 2000, 3)[0];
    for (std::size_t i = 0; i < emg.size(); ++i) {
      const bool active = (i >= 500 && i < 800) || (i >= 1200 && i < 1600);
      emg[i] *= active ? 1.0F : 0.02F;
    }
    SetChannels(trial, {emg, emg}, 1000);
  }
};

TEST_F(Onsets, AreFoundAndStoredAsEvents) {
  const auto before = Bits(trial);
  Compute({{"channels 1", "yes"}});
  EXPECT_EQ(Bits(trial), before) << "the channels stay as they are";
  const ResultTable& bursts = Table("frmOnsets");
  ASSERT_EQ(bursts.rows.size(), 2U);
  const double expected[2][2] = {{0.5, 0.8}, {1.2, 1.6}};
  ASSERT_EQ(workbench.events.NEvents(), 2);
  for (std::size_t b = 0; b < 2; ++b) {
    const double on = std::get<double>(bursts.rows[b][3]);
    const double off = std::get<double>(bursts.rows[b][4]);
    EXPECT_NEAR(on, expected[b][0], 0.03);
    EXPECT_NEAR(off, expected[b][1], 0.03);
    EXPECT_NEAR(workbench.events.ChannelEvents[b][1].on, on, 1e-6);
    EXPECT_NEAR(workbench.events.ChannelEvents[b][1].off, off, 1e-6);
    EXPECT_EQ(workbench.events.ChannelEvents[b][2], EventTimes{});
  }
  EXPECT_TRUE(workbench.events.EventTracking && workbench.events.EventsUnsaved);
  EXPECT_NEAR(std::get<double>(Table("frmOnsetsSummary").rows[0][3]), 35, 4) << "percent of the time";

  // Times that are there are replaced after a question alone; fewer bursts leave no old ones behind.
  const auto stored = workbench.events.ChannelEvents;
  questions.boxAnswers = {Button::No};
  Compute({{"channels 1", "yes"}, {"txtAbove", "350"}});
  EXPECT_EQ(workbench.events.ChannelEvents[1][1], stored[1][1]);
  questions.boxAnswers = {Button::Yes};
  Compute({{"channels 1", "yes"}, {"txtAbove", "350"}});
  EXPECT_NEAR(workbench.events.ChannelEvents[0][1].on, 1.2, 0.03);
  EXPECT_EQ(workbench.events.ChannelEvents[1][1], EventTimes{});
}

TEST_F(Onsets, EveryBaselineAndItsRefusals) {
  Compute({{"channels 2", "yes"}, {"optBaseline", "1"}, {"chkEvents", "no"}});
  EXPECT_EQ(Table("frmOnsets").rows.size(), 2U);
  EXPECT_FALSE(workbench.events.EventTracking);
  Compute({{"channels 2", "yes"}, {"optBaseline", "3"}, {"Thresholds 2", "0.2"}, {"chkEvents", "no"}});
  EXPECT_EQ(Table("frmOnsets").rows.size(), 2U);
  EXPECT_EQ(std::get<double>(Table("frmOnsets").rows[0][9]), 0.2);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(Table("frmOnsetsSummary").rows[0][4]));
  EXPECT_EQ(Refused({}), "Too Few Channels Selected|You must choose at least 1 channel.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"txtEnvelope", "500"}}),
            "Invalid Entry|Envelope cut-off must be from 0 to 500.");
  // Zeros before the sensor was on are the quietest stretch, but no rest.
  for (int i = 1; i <= 250; ++i) {
    trial.Data(i, 2) = 0.0F;
  }
  Compute({{"channels 1", "yes"}, {"channels 2", "yes"}, {"chkEvents", "no"}});
  EXPECT_HAS(LastBox(),
             "No Rest in the Baseline|Much of the baseline is one value that never changes, in "
             "channels: 01.");
  trial.Data(7, 1) = INFINITY;
  EXPECT_EQ(Refused({{"channels 1", "yes"}}),
            "Missing Data|Channel 00 has 1 samples that are no numbers between samples 1 and 2000.");
}

struct CoContractions : AnalysisTest {
  CoContractions() : AnalysisTest("emg.co-contraction") {}
};

TEST_F(CoContractions, ThreeIndicesByHandAndTheCurve) {
  SetChannels(trial, {{1, 0}, {1, 2}}, 4);
  Compute({{"comAgonist", "1"}, {"comAntagonist", "2"}, {"chkCurve", "yes"}});
  const ResultTable& table = workbench.results.ResultTables.back();
  EXPECT_EQ(std::get<double>(table.rows[0][1]), 50);
  EXPECT_EQ(std::get<double>(table.rows[1][1]), 1);
  EXPECT_EQ(std::get<double>(table.rows[2][1]), 0.25);
  ASSERT_EQ(trial.NChan, 3);
  EXPECT_EQ(Channel(trial, 3), (Samples{2, 0}));
  EXPECT_EQ(trial.ChanLabel[3].Text(), "Co-contraction");
  // The curve goes beyond the range, where samples may be missing.
  SetChannels(trial, {{1, 1, kNan, 3}, {1, 1, 3, kNan}}, 4);
  trial.CursorLo = 1;
  trial.CursorHi = 2;
  questions.boxAnswers = {Button::Yes};
  Compute({{"comAgonist", "1"}, {"comAntagonist", "2"}, {"chkCurve", "yes"}});
  EXPECT_EQ(Channel(trial, 3)[1], 2);
  EXPECT_TRUE(std::isnan(Channel(trial, 3)[2]) && std::isnan(Channel(trial, 3)[3]));

  // Silence has no percentage; what is below 0 is told.
  SetChannels(trial, {{0, -1}, {0, 0}}, 4);
  Compute({{"comAgonist", "1"}, {"comAntagonist", "2"}});
  EXPECT_TRUE(std::holds_alternative<std::monostate>(workbench.results.ResultTables.back().rows[0][1]));
  EXPECT_EQ(LastBox(), "Not an Envelope|1 sample below 0 counted as 0: the channels are to be envelopes.");
  EXPECT_EQ(Refused({{"comAntagonist", "1"}}),
            "Too Few Channels Selected|You must choose at least 2 channels.");
}

}  // namespace
}  // namespace velmora::test
