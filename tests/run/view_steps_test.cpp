#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

/// Recipes over a trial of two channels, 101 samples at 100 Hz, channel 1 counting from 1.
class ViewStepsTest : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    SetChannels(trial, {CountingUp(101), Samples(101, -2.5F)});
    trial.TrialName = "jump";
  }
};

TEST_F(ViewStepsTest, APieceIsSelectedAndCropped) {
  Run(R"(
  - do: graph.single
    answers:
      - form: {channels: [2], press: None}
      - form: {channels: [1], TxtWindow: 0.5, lstColours: {1: 4}}
  - view: {key: ctrl+pageup}
  - view: {key: "2"}
  - view: {move: 1, x: 0.75}
  - view: {move: 2, x: 0.25}
  - view: {key: n}
  - info: "${out}/selected.json"
  - do: crop.outside
    answers: [form: {ClipResetTime: true, press: Crop}]
  - view: {key: Delete}
    answers: [{title: "Delete Cursor?", box: "Yes"}]
  - view: {double-click: 1}
  - view: {key: "5"}
  - info: "${out}/cropped.json"
  - view: {close: true}
  - info: "${out}/closed.json"
)");
  ASSERT_EQ(Why(), "all ran");
  const json selected = Info("selected.json");
  EXPECT_EQ(selected["CursorLo"], 26);
  EXPECT_EQ(selected["CursorHi"], 76);
  const json& view = selected["view"];
  EXPECT_EQ(view["kind"], "single");
  EXPECT_EQ(view["WindowMode"], 0);
  EXPECT_EQ(view["x"], json({{"min", 0.5}, {"max", 1.0}, {"log", 0}, {"caption", "Time (s)"}}));
  EXPECT_EQ(view["y"]["max"], 101.0);
  EXPECT_EQ(view["plots"][0]["colour"], 4);
  EXPECT_EQ(view["plots"][0]["visible"], -1);
  EXPECT_EQ(view["plots"][1]["visible"], 0);
  EXPECT_EQ(view["cursors"][0],
            json({{"x", 0.75}, {"y", 0.0}, {"colour", 0xFFFF}, {"name", "1"}, {"kind", "cursor"}}));
  EXPECT_EQ(view["cursors"][1]["x"], 0.25);

  const json cropped = Info("cropped.json");
  EXPECT_EQ(cropped["NData"], 51);
  EXPECT_EQ(cropped["Duration"], 0.5);
  EXPECT_EQ(cropped["FileChanged"], -1);
  EXPECT_EQ(cropped["view"]["cursors"].size(), 1U);
  EXPECT_EQ(cropped["view"]["y"]["min"], 26.0);
  EXPECT_EQ(cropped["view"]["values"]["sample"], "1");
  EXPECT_FALSE(Info("closed.json").contains("view"));
}

TEST_F(ViewStepsTest, WhatCannotBeDoneFailsItsStep) {
  const std::string open = "  - do: graph.single\n    answers: [form: {channels: all}]\n";
  Run(open + "  - view: {key: Q}\n");
  EXPECT_EQ(Why(), "the graph has no key \"Q\"");
  Run(open + "  - view: {move: 1, x: 0.5}\n");
  EXPECT_EQ(Why(), "there is no cursor 1, but 0");
  Run(open + "  - view: {click: 2}\n");
  EXPECT_EQ(Why(), "there is no graph 2, only graph 1");
  Run(open + "  - view: {key: F1}\n    answers: [box: \"Yes\"]\n");
  EXPECT_NE(Why().find("nothing asked for the box answer"), std::string::npos);
  Run(open + "  - view: {key: \"2\"}\n  - view: {key: Delete}\n");
  EXPECT_NE(Why().find("Delete Cursor?"), std::string::npos);
  Run(open + "  - view: {close: true}\n  - do: cursor.one\n");
  EXPECT_NE(Why().find("no graph is open"), std::string::npos);
  Run(open + "  - do: file.load\n    file: \"${out}/missing.vmb\"\n");
  EXPECT_EQ(run_->State().view, nullptr);  // with the trial goes its graph
}

TEST_F(ViewStepsTest, AStepThatIsNoGestureIsRefusedBeforeAnythingRuns) {
  for (const char* step : {"{}",
                           "{key: A, click: 1}",
                           "{move: 1}",
                           "{key: A, x: 1}",
                           "{move: 0, x: 1}",
                           "{threshold: 1}",
                           "{key: A, y: 1}",
                           "{move: 1, x: nan}",
                           "{move: 1, x: 1e999}",
                           "{close: false}",
                           "{click: one}",
                           "{drag: 1}",
                           "{key: \"\"}",
                           "{key: A, size: [100, 100]}",
                           "{key: A, white: true}",
                           "{image: p.gif}",
                           "{image: p}",
                           "{image: p.png, size: 9}",
                           "{image: p.png, size: [1600]}",
                           "{image: p.png, size: [99, 900]}",
                           "{image: p.png, size: [1600, 16385]}",
                           "{image: p.png, white: maybe}"}) {
    const std::string recipe = std::string("velmora2: 1\nsteps:\n  - view: ") + step + "\n";
    EXPECT_THROW(ReadRecipe(recipe, "r.yaml", {}), RecipeError) << step;
  }
}

}  // namespace
}  // namespace velmora::test
