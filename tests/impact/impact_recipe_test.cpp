// Impacts and work as steps of a recipe.
#include <cmath>

#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

struct ImpactRecipe : RecipeTest {
  // Half a second at 2000 Hz: a blow along three axes, the moment and the angle of a joint, a force.
  void MakeTrial(Trial& trial) override {
    std::vector<Samples> channels(6);
    for (int i = 0; i < 1000; ++i) {
      const double t = i / 2000.0;
      const double blow = i >= 400 && i <= 430 ? 60 * std::sin((i - 400) / 30.0 * 3.14159265) : 0;
      const double values[] = {blow * 0.6, blow * 0.8, 1.0, 20 * std::sin(20 * t), 30 * std::cos(20 * t),
                               50 * blow};
      for (std::size_t c = 0; c < channels.size(); ++c) {
        channels[c].push_back(static_cast<float>(values[c]));
      }
    }
    SetChannels(trial, channels, 2000);
    const char* units[] = {"g", "g", "g", "N.m", "deg", "N"};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.ChanUnits[c] = units[c - 1];
    }
    trial.TrialName = "fall";
    trial.ChanLabel[6] = "Fz";
  }
};

TEST_F(ImpactRecipe, RunsEveryCommandAndListsItsTables) {
  Run(R"(
  - do: impact.accelerometry
    answers:
      - form: {comClass: "180", chkTilt: true, press: Compute}
      - form: {press: Graph}
      - form: {press: Exit}
  - do: impact.analysis
    answers:
      - form: {channels: {Fz: true}, optPeak: First local maximum, txtBodyWeight: 700, press: Compute}
      - form: {press: Save}
      - file: "${out}impacts.tab"
      - form: {press: Exit}
  - do: integrate.moment-power
    answers:
      - form: {txtLabel: Knee power, txtMass: 70, press: Compute}
      - form: {press: Exit}
  - do: integrate.work
    answers:
      - form: {channels: {Fz: true, Knee power: true}, chkIntegral: true, press: Compute}
      - form: {comShown: 1, press: Graph}
      - form: {press: Exit}
  - info: "${out}info.json"
)",
      true);
  ASSERT_EQ(Why(), "all ran");
  using Names = std::set<std::string>;
  EXPECT_EQ(FieldsOf("frmAccelerometry"), (Names{"comX", "comY", "comZ", "optUnits", "comClass", "txtBias",
                                                 "txtHIC1", "txtHIC2", "chkResultant", "chkTilt"}));
  EXPECT_EQ(FieldsOf("frmImpact"),
            (Names{"channels", "txtThreshold", "txtRelease", "txtMinDuration", "txtMinGap", "chkNegative",
                   "optPeak", "txtPeakWindow", "comClass", "txtBodyWeight"}));
  EXPECT_EQ(FieldsOf("frmMomentPower"),
            (Names{"comMoment", "comMotion", "optMotion", "optAngle", "txtLabel", "txtSmallest", "txtMass"}));
  EXPECT_EQ(FieldsOf("frmWork"), (Names{"channels", "txtSmallest", "txtMass", "chkIntegral"}));
  const nlohmann::json info = Info("info.json");
  EXPECT_EQ(info.at("NChan"), 6 + 3 + 1 + 2);
  EXPECT_EQ(info.at("channels")[10].at("ChanLabel"), "Knee power");
  EXPECT_EQ(info.at("channels")[12].at("ChanLabel"), "Int. Knee power");
  EXPECT_EQ(info.at("frmAccelerometry").at("rows")[3][0], "Peak resultant");
  EXPECT_EQ(info.at("frmImpact").at("rows").size(), 1U);
  EXPECT_EQ(info.at("frmWorkTotals").at("rows")[1].back(), "J");
  // The power's work between the cursors is what its running integral ends with.
  const double net = info.at("frmWorkTotals").at("rows")[1][4];
  EXPECT_NEAR(run_->State().trial.Data(1000, 12), net, 1e-6 * std::abs(net));
  EXPECT_EQ(done_.size(), 4U);
  const std::string saved = ReadFile(directory_.Path("impacts.tab"));
  EXPECT_NE(saved.find("Range:\t1\t1000\r\n"), std::string::npos);
  EXPECT_NE(saved.find("optPeak:\tFirst local maximum"), std::string::npos) << saved;
}

TEST_F(ImpactRecipe, CancelLeavesTheTrialAsItWas) {
  Run(R"(
  - do: impact.accelerometry
    answers: [{form: {press: Cancel}}]
  - do: impact.analysis
    answers: [{form: {press: Cancel}}]
  - do: integrate.moment-power
    answers: [{form: {press: Cancel}}]
  - do: integrate.work
    answers: [{form: {press: Cancel}}]
)");
  ASSERT_EQ(Why(), "all ran");
  EXPECT_TRUE(done_.empty());
  EXPECT_EQ(run_->State().trial.NChan, 6);
  EXPECT_FALSE(run_->State().trial.FileChanged);
}

}  // namespace
}  // namespace velmora::test
