// Contacts, centre of gravity and sway as a recipe runs them: fields, files, tables of the info.
#include <cmath>

#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

/// Half a second of each foot in turn on a treadmill, and a sway below it.
class BodyRecipe : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    std::vector<float> force;
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 400; ++i) {
      force.push_back(i < 100 || (i / 50) % 2 == 0 ? 700.0F : 0.0F);
      x.push_back(static_cast<float>(std::sin(i * 0.05)));
      y.push_back(static_cast<float>(0.5 * std::cos(i * 0.03)));
    }
    SetChannels(trial, {force, x, y}, 100);
    trial.TrialName = "stand";
    trial.ChanLabel[1] = "Fz#1";
    trial.ChanLabel[2] = "Ax#1";
    trial.ChanLabel[3] = "Ay#1";
    trial.ChanUnits[1] = "N";
    trial.ChanUnits[2] = "cm";
    trial.ChanUnits[3] = "cm";
  }
};

TEST_F(BodyRecipe, RunsEveryCommandAndListsItsTables) {
  Run(R"(
  - do: plates.contacts
    answers:
      - form: {channels: {1: true}, press: Compute}
      - form: {press: Save}
      - file: "${out}contacts.tab"
      - form: {press: Exit}
  - do: plates.sway
    answers:
      - form: {press: Compute}
      - form: {press: Graph}
      - form: {press: Save}
      - file: "${out}sway.cog"
      - form: {press: Exit}
  - do: plates.gravity
    answers:
      - form: {press: Compute}
      - form: {press: Send results to Clipboard}
      - form: {press: Save}
      - file: "${out}gravity.cog"
      - form: {press: Exit}
  - info: "${out}info.json"
)");
  EXPECT_EQ(Why(), "all ran");
  const auto tables = Info("info.json");
  EXPECT_EQ(tables.at("frmContacts").at("rows").size(), 3U);
  EXPECT_EQ(tables.at("frmContacts").at("columns").size(), 12U);
  EXPECT_EQ(tables.at("frmContactsSummary").at("rows").at(0).at(3), 2) << "whole ones";
  EXPECT_EQ(tables.at("frmSway").at("columns"), (nlohmann::json{"Measure", "ML", "AP", "Both", "Units"}));
  EXPECT_TRUE(tables.at("frmSway").at("rows").at(0).at(3).is_null()) << "both have no mean position";
  EXPECT_EQ(tables.at("frmGravity").at("columns"), (nlohmann::json{"Quantity", "Value", "Units"}));
  EXPECT_EQ(tables.at("frmGravity").at("rows").at(1), (nlohmann::json{"Weight", 700, "N"}));
  const std::set<std::string> contacts = {"channels",      "txtOn",     "txtOff",         "optUnits",
                                          "txtMinContact", "txtMinGap", "chkInterpolate", "chkEvents"};
  EXPECT_EQ(FieldsOf("frmContacts"), contacts);
  EXPECT_EQ(FieldsOf("frmSway"), (std::set<std::string>{"comML", "comAP", "txtCutoff", "chkDetrend"}));
  const std::set<std::string> gravity = {
      "comFx",     "comFy",           "comFz",       "comAx",           "comAy",        "optMass",
      "txtMass",   "txtQuiet",        "txtGravity",  "chkUnloaded",     "optDrift",     "optHorizontal",
      "txtHeight", "chkAcceleration", "chkVelocity", "chkDisplacement", "txtThreshold", "txtStart"};
  EXPECT_EQ(FieldsOf("frmGravity"), gravity);
  const std::string saved = ReadFile(directory_.Path("gravity.cog"));
  EXPECT_NE(saved.find("\r\nRange:\t1\t400\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("\r\nWeight\t700\tN\r\n"), std::string::npos) << saved;
  EXPECT_NE(ReadFile(directory_.Path("sway.cog")).find("\r\nMean position\t"), std::string::npos);
  EXPECT_NE(ReadFile(directory_.Path("contacts.tab")).find("\r\ntxtOn:\t20"), std::string::npos);
  EXPECT_EQ(run_->State().events.NEvents(), 3);
}

}  // namespace
}  // namespace velmora::test
