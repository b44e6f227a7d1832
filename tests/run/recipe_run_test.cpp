#include "run/recipe/recipe_run.hpp"

#include "run/report/info.hpp"
#include "support/native_file.hpp"
#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

class RecipeRunTest : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override { SetChannels(trial, {{1, 2, 4}, {-3, 4, 5}, {0.5F, 6, 7}}); }
  std::vector<float> Channel(int c) { return test::Channel(run_->State().trial, c); }
};

TEST_F(RecipeRunTest, StepsRunInOrderUntilOneFails) {
  Run(R"(
  - do: math.absolute
    answers: [pick: {channels: [2]}]
  - do: math.add
    answers: [pick: {values: {1: 10, 3: -0.5}}]
  - do: math.add
  - do: math.negate
    answers: [pick: {channels: all}]
)");
  EXPECT_EQ(Channel(1), (std::vector<float>{11, 12, 14}));
  EXPECT_EQ(Channel(2), (std::vector<float>{3, 4, 5}));
  EXPECT_EQ(Channel(3), (std::vector<float>{0, 5.5F, 6.5F}));
  ASSERT_TRUE(outcome_.failure);
  EXPECT_EQ(PlaceText(outcome_.failure->at), "step 3 (math.add, line 8)");
  EXPECT_NE(Why().find("pick \"Enter Constant(s) to be added to channel(s) (R=X+c).\""), std::string::npos);
}

TEST_F(RecipeRunTest, EveryWayAStepCanFailIsTold) {
  Run("  - do: math.subtract\n");
  EXPECT_NE(Why().find("no command \"math.subtract\""), std::string::npos);
  Run("  - do: math.square\n    answers: [{pick: {channels: [1]}}, {box: Yes}]\n");
  EXPECT_NE(Why().find("nothing asked for the box answer of line 4"), std::string::npos);
  Run("  - view: {close: true}\n");
  EXPECT_EQ(Why(), "no graph is open");
  Run("  - info: \"${out}/no/such/i.json\"\n");
  EXPECT_NE(Why().find("cannot write"), std::string::npos);
  Run("  - do: file.load\n    file: \"${out}/missing.vmb\"\n");
  EXPECT_NE(Why().find("Error reading file"), std::string::npos);
  Run("  - do: math.power\n    answers: [pick: {values: {1: 200}}]\n");  // does not fit 32 bits
  EXPECT_TRUE(outcome_.failure);
}

TEST_F(RecipeRunTest, ACutFileIsToldInTheTableAndTheInfoAndFailsAStrictRun) {
  WriteFile(directory_.Path("cut.vmb"), FileByHand(1, 100).substr(0, kSamplesAt + std::size_t{4} * 150));
  const std::string steps = "  - do: file.load\n    file: \"${out}/cut.vmb\"\n  - info: \"${out}/i.json\"\n";
  const std::string notice = "The file ends after 50 of 100 samples of channel 00; the rest is 0.";
  Run(steps);
  EXPECT_EQ(Why(), "all ran");
  ASSERT_EQ(outcome_.warnings.size(), 1U);
  EXPECT_EQ(outcome_.warnings[0].why, notice);
  EXPECT_EQ(Info("i.json")["Notices"], json({notice}));
  Run(steps, true);
  EXPECT_EQ(Why(), notice);
}

TEST_F(RecipeRunTest, TranscriptTellsEveryQuestionInOrder) {
  Run(R"(
  - do: analysis.scaling
    answers: [pick: {values: {1: 0.1}}]
  - do: math.path-length
    answers: [pick: {channels: [1, 3]}]
  - do: math.square
)");
  ASSERT_EQ(lines_.size(), 4U);
  EXPECT_EQ(lines_[0],
            R"({"input":"in/a.vmb","step":1,"kind":"pick","title":"",)"
            R"("text":"Enter scaling factor (multiplier) for each channel (0.00 means take no action).",)"
            R"("prompt":"Enter scaling factor (multiplier) for each channel (0.00 means take no action).",)"
            R"("mode":"values","values":{"1":1.0,"2":1.0,"3":1.0},"channels":[],)"
            R"("values_out":{"1":0.1,"2":1.0,"3":1.0},"answer":"Process"})");
  const json pick = json::parse(lines_[1]);
  EXPECT_EQ(pick["mode"], "select");
  EXPECT_EQ(pick["channels"], json({1, 3}));
  // From (0.1, 0.5) over (0.2, 6) to (0.4, 7): sqrt(0.01 + 30.25) + sqrt(0.04 + 1).
  EXPECT_EQ(lines_[2],
            R"({"input":"in/a.vmb","step":2,"kind":"box","title":"Path Length",)"
            R"("text":"Path starts from datum 1 to datum 3.\nPath length of channels 00 and 02 is 6.5207.",)"
            R"("icon":"information","buttons":["OK"],"answer":"OK"})");
  const json unanswered = json::parse(lines_[3]);
  EXPECT_EQ(unanswered["step"], 3);
  EXPECT_TRUE(unanswered["answer"].is_null());
}

TEST_F(RecipeRunTest, TablesAreInTheTranscriptAndTheInfo) {
  Run(R"(
  - do: math.absolute
    answers: [pick: {channels: [1]}]
  - do: smooth.polynomial
    answers:
      - pick: {values: {1: 2}}
      - box: "No"
      - form: {press: Next}
  - info: "${out}/i.json"
)");
  ASSERT_EQ(Why(), "all ran");
  const json table = Info("i.json")["frmCoeff"];
  EXPECT_EQ(table["columns"], json({"Order", "Coefficient"}));
  ASSERT_EQ(table["rows"].size(), 3U);
  EXPECT_EQ(table["rows"][0][0], "    + t^0 x ");
  EXPECT_NEAR(table["rows"][0][1].get<double>(), 1.0, 1e-9);  // the parabola through the three samples
  EXPECT_EQ(json::parse(lines_.back())["fields"]["frmCoeff"], table);
}

TEST_F(RecipeRunTest, InfoHasTheStateWithAllDigitsHoweverOdd) {
  Run("  - do: analysis.scaling\n    answers: [pick: {values: {2: 0.1}}]\n");
  Workbench& workbench = run_->State();
  workbench.trial.Rate = std::numeric_limits<double>::quiet_NaN();
  workbench.trial.Duration = 0.1 + 0.2;
  workbench.trial.ChanOffset[1] = -std::numeric_limits<double>::infinity();
  workbench.trial.FileName = "caf\xE9/\xFF.vmb";  // any bytes make a file name
  workbench.trial.HeaderLines[2] = "a \"quoted\"\tline\n";
  workbench.trial.HeaderLineCount = 2;
  const std::string text = InfoText(workbench);
  EXPECT_LT(text.find("\"NChan\""), text.find("\"NData\""));
  const json info = json::parse(text);
  EXPECT_EQ(info["NChan"], 3);
  EXPECT_EQ(info["FileChanged"], -1);
  EXPECT_EQ(info["PairedGraphs"], 0);
  EXPECT_TRUE(info["Rate"].is_null());
  EXPECT_EQ(info["Duration"].get<double>(), 0.1 + 0.2);
  EXPECT_EQ(info["HeaderLines"], json({"", "a \"quoted\"\tline\n"}));
  ASSERT_EQ(info["channels"].size(), 4U);
  EXPECT_EQ(info["channels"][0]["ChanLabel"], "Time");
  EXPECT_TRUE(info["channels"][1]["ChanOffset"].is_null());
  EXPECT_EQ(info["channels"][2]["ChanGain"].get<double>(), static_cast<double>(0.1F));
  EXPECT_FALSE(info.contains("ResultText") || info.contains("view"));
  workbench.results.ResultText = "°/s";
  EXPECT_EQ(json::parse(InfoText(workbench))["ResultText"], "°/s");
}
}  // namespace
}  // namespace velmora::test
