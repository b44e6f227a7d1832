// Statistics, channels, impacts and force plates as steps: every command from a recipe with its tables.
#include <cmath>

#include "support/recipe_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct AnalysesRecipe : RecipeTest {
  // 4 s at 1000 Hz: two that follow each other by 5 samples, a blow along three axes, the moment and the
  // angle of a joint, the feet on a belt by turns of half a second and the sway on it.
  void MakeTrial(Trial& trial) override {
    constexpr std::size_t kCount = 10;
    std::vector<Samples> channels(kCount);
    for (int i = 0; i < 4000; ++i) {
      const double t = i / 1000.0;
      const double blow = i >= 2000 && i <= 2015 ? 60 * std::sin((i - 2000) / 15.0 * 3.14159265) : 0;
      const double values[kCount] = {std::sin(i * 0.1),
                                     std::sin((i - 5) * 0.1) + 0.01 * (i % 7),
                                     blow * 0.6,
                                     blow * 0.8,
                                     1.0,
                                     20 * std::sin(20 * t),
                                     30 * std::cos(20 * t),
                                     i < 1000 || (i / 500) % 2 == 0 ? 700.0 : 0.0,
                                     std::sin(5 * t),
                                     0.5 * std::cos(3 * t)};
      for (std::size_t c = 0; c < kCount; ++c) {
        channels[c].push_back(static_cast<float>(values[c]));
      }
    }
    SetChannels(trial, channels, 1000);
    const char* labels[kCount] = {"EMG", "Force", "ax", "ay", "az", "Knee", "Angle", "Fz#1", "Ax#1", "Ay#1"};
    const char* units[kCount] = {"mV", "V", "g", "g", "g", "N.m", "deg", "N", "cm", "cm"};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.ChanLabel[c] = labels[c - 1];
      trial.ChanUnits[c] = units[c - 1];
    }
    trial.TrialName = "walk";
  }
};

TEST_F(AnalysesRecipe, RunsEveryCommandAndListsItsTables) {
  Run(R"(
  - do: statistics.descriptive
    answers:
      - pick: {channels: all}
      - form: {press: Save}
      - file: "${out}means.tab"
      - form: {press: Exit}
  - do: statistics.median
    answers: [{pick: {channels: [1]}}, {form: {press: Exit}}]
  - do: statistics.emg
    answers: [{form: {press: Exit}}]
  - do: statistics.integration
    answers: [{pick: {channels: all}}, {form: {press: Exit}}]
  - do: statistics.windows
    answers:
      - form: {optSplit: Equal windows, txtCount: 4, channels: {1: true}, press: Compute}
      - form: {press: Send results to Clipboard}
      - form: {press: Exit}
  - do: statistics.correlation
    answers: [{pick: {channels: [1, 2]}}, {form: {press: Exit}}]
  - do: statistics.regression
    answers: [{form: {comY: 2, channels: {1: true}, press: Compute}}, {form: {press: Exit}}]
  - do: statistics.cross-correlation
    answers:
      - form: {comX: 1, comY: "01: Force", txtMaxLag: 0.3, press: Compute}
      - form: {press: Graph}
      - form: {press: Exit}
  - do: impact.accelerometry
    answers: [{form: {comClass: "60", press: Compute}}, {form: {press: Exit}}]
  - do: impact.analysis
    answers:
      - form: {channels: {ay: true}, optPeak: First local maximum, txtMinDuration: 0, press: Compute}
      - form: {press: Exit}
  - do: plates.contacts
    answers: [{form: {channels: {"Fz#1": true}, press: Compute}}, {form: {press: Exit}}]
  - do: plates.sway
    answers: [{form: {press: Compute}}, {form: {press: Exit}}]
  - do: plates.gravity
    answers:
      - form: {press: Compute}
      - form: {press: Save}
      - file: "${out}gravity.cog"
      - form: {press: Exit}
  - do: integrate.moment-power
    answers: [{form: {txtLabel: Knee power, txtMass: 70, press: Compute}}, {form: {press: Exit}}]
  - do: integrate.work
    answers:
      - form: {channels: {"Fz#1": true, Knee power: true}, chkIntegral: true, press: Compute}
      - form: {comShown: 1, press: Graph}
      - form: {press: Exit}
  - do: channel.copy
    answers: [{pick: {channels: [1]}}]
  - do: channel.move
    answers: [{pick: {values: {1: 99}}}]
  - do: channel.combine
    answers: [{form: {optOperation: Resultant, channels: {2: true, 3: true}, press: Compute}}]
  - do: channel.generate
    answers: [{form: {press: Add}}, {form: {press: Done}}]
  - do: channel.erase
    answers: [{pick: {channels: [1]}}, {box: "Yes"}]
  - info: "${out}info.json"
)");
  ASSERT_EQ(Why(), "all ran");
  EXPECT_EQ(done_.size(), 21U) << "one each, and the events of the contacts";
  const nlohmann::json info = Info("info.json");
  for (const char* table : {"frmMeans",
                            "frmMedians",
                            "frmEMGstats",
                            "frmIntegral",
                            "frmWindowStats",
                            "frmCorrelation",
                            "frmRegression",
                            "frmAgreement",
                            "frmCrossCorrelation",
                            "frmCorrelationMatrix",
                            "frmRegressionFit",
                            "frmLag",
                            "frmImpact",
                            "frmAccelerometry",
                            "frmContactsSummary",
                            "frmContacts",
                            "frmSway",
                            "frmGravity",
                            "frmWork",
                            "frmWorkTotals"}) {
    ASSERT_TRUE(info.contains(table)) << table;
    EXPECT_FALSE(info.at(table).at("rows").empty()) << table;
  }
  const auto row = [&info](const char* table, std::size_t k) { return info.at(table).at("rows").at(k); };
  EXPECT_EQ(row("frmLag", 0)[1], 5);
  EXPECT_EQ(row("frmWindowStats", 1)[3], 1001);
  EXPECT_EQ(row("frmContactsSummary", 0)[3], 2) << "whole ones";
  EXPECT_TRUE(row("frmSway", 0)[3].is_null()) << "both have no mean position";
  EXPECT_EQ(row("frmGravity", 1), (nlohmann::json{"Weight", 700, "N"}));
  EXPECT_EQ(row("frmWorkTotals", 1).back(), "J");
  EXPECT_EQ(info.at("channels").back().at("ChanLabel"), "Sine");
  // The power's work is what its running integral ends with.
  Trial& trial = run_->State().trial;
  int integral = 1;
  while (integral < trial.NChan && trial.ChanLabel[integral] != "Int. Knee power") {
    ++integral;
  }
  const double net = row("frmWorkTotals", 1)[4];
  EXPECT_NEAR(trial.Data(4000, integral), net, 1e-6 * std::abs(net));
  const std::string means = ReadFile(directory_.Path("means.tab"));
  EXPECT_HAS(means, "Range:\t1\t4000\r\n\r\nChannel\tLabel\tUnits\tn\tMean");
  EXPECT_HAS(ReadFile(directory_.Path("gravity.cog")), "\r\nWeight\t700\tN\r\n");
}

}  // namespace
}  // namespace velmora::test
