#include <cmath>

#include "app/command_table.hpp"
#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

/// Every command of statistics and channels as a recipe runs it.
class AnalysesRecipe : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    std::vector<float> a;
    std::vector<float> b;
    for (int i = 0; i < 200; ++i) {
      a.push_back(static_cast<float>(std::sin(i * 0.1)));
      b.push_back(static_cast<float>(std::sin((i - 5) * 0.1) + 0.01 * (i % 7)));
    }
    SetChannels(trial, {a, b}, 100);
    trial.TrialName = "walk";
    trial.ChanLabel[1] = "EMG";
    trial.ChanLabel[2] = "Force";
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
    answers: [{pick: {channels: all}}, {form: {press: Exit}}]
  - do: statistics.regression
    answers:
      - form: {comY: 2, channels: {1: true}, chkFitted: true, press: Compute}
      - form: {press: Exit}
  - do: statistics.cross-correlation
    answers:
      - form: {comX: 1, comY: "01: Force", txtMaxLag: 0.3, press: Compute}
      - form: {press: Graph}
      - form: {press: Exit}
  - do: channel.copy
    answers: [{pick: {channels: [1]}}]
  - do: channel.move
    answers: [{pick: {values: {4: 0.5}}}]
  - do: channel.teager-kaiser
    answers: [{pick: {channels: [1]}}]
  - do: channel.combine
    answers: [{form: {optOperation: Resultant, channels: {2: true, 3: true}, press: Compute}}]
  - do: channel.generate
    answers: [{form: {press: Add}}, {form: {press: Done}}]
  - do: channel.erase
    answers: [{pick: {channels: [2]}}, {box: "Yes"}]
  - info: "${out}info.json"
)");
  ASSERT_EQ(Why(), "all ran");
  const nlohmann::json info = Info("info.json");
  EXPECT_EQ(info.at("NChan"), 5);
  EXPECT_EQ(info.at("channels")[1].at("ChanLabel"), "EMG copy");
  for (const char* table : {"frmMeans", "frmMedians", "frmEMGstats", "frmIntegral", "frmWindowStats",
                            "frmCorrelation", "frmCorrelationMatrix", "frmRegression", "frmRegressionFit",
                            "frmAgreement", "frmCrossCorrelation", "frmLag"}) {
    ASSERT_TRUE(info.contains(table)) << table;
    EXPECT_FALSE(info.at(table).at("rows").empty()) << table;
  }
  EXPECT_EQ(info.at("frmLag").at("rows")[0][1], 5);
  EXPECT_EQ(info.at("frmWindowStats").at("rows")[1][3], 51);
  EXPECT_NE(
      ReadFile(directory_.Path("means.tab")).find("Range:\t1\t200\r\n\r\nChannel\tLabel\tUnits\tn\tMean"),
      std::string::npos);
  EXPECT_EQ(done_.size(), 14U);
}

TEST_F(AnalysesRecipe, DialoguesHaveTheFieldsThatTheirPageNames) {
  Run(R"(
  - do: statistics.windows
    answers: [{form: {press: Cancel}}]
  - do: statistics.regression
    answers: [{form: {press: Cancel}}]
  - do: statistics.cross-correlation
    answers: [{form: {press: Cancel}}]
  - do: channel.combine
    answers: [{form: {press: Cancel}}]
  - do: channel.generate
    answers: [{form: {press: Cancel}}]
)");
  ASSERT_EQ(Why(), "all ran");
  using Names = std::set<std::string>;
  EXPECT_EQ(FieldsOf("frmWindowStats"),
            (Names{"optSplit", "WindowWidth", "WindowInSeconds", "txtOverlap", "txtCount", "channels"}));
  EXPECT_EQ(FieldsOf("frmRegression"),
            (Names{"comY", "channels", "chkTime", "chkIntercept", "chkFitted", "chkResiduals"}));
  EXPECT_EQ(FieldsOf("frmCrossCorrelation"), (Names{"comX", "comY", "txtMaxLag", "optNorm", "chkShift"}));
  EXPECT_EQ(FieldsOf("frmCombine"),
            (Names{"optOperation", "channels", "Weights", "optTarget", "txtLabel", "txtUnits"}));
  Names waveform = FieldsOf("frmWaveform");
  waveform.erase("graph");
  EXPECT_EQ(waveform, (Names{"optShape", "txtAmplitude", "txtOffset", "txtFrequency", "txtEndFrequency",
                             "txtPhase", "txtDuty", "txtStart", "txtWidth", "txtSeed", "txtRate",
                             "txtDuration", "txtLabel", "txtUnits"}));
  EXPECT_TRUE(done_.empty());
}

TEST_F(AnalysesRecipe, ARefusalIsAWarningAndGraphsHaveEveryName) {
  Run(R"(
  - do: statistics.correlation
    answers: [{pick: {channels: [1]}}]
)");
  EXPECT_EQ(Why(), "all ran");
  EXPECT_EQ(outcome_.warnings.size(), 1U);
  for (const char* range : {"statistics.all-", "statistics.between-"}) {
    for (const char* table : {"descriptive", "median", "emg", "integration"}) {
      EXPECT_NE(FindCommand(std::string(range) + table), nullptr) << range << table;
    }
  }
  EXPECT_NE(FindCommand("statistics.cursors"), nullptr);
}

}  // namespace
}  // namespace velmora::test
