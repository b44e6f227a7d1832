#include "run/history.hpp"

#include "graph/single_view.hpp"
#include "run/recipe_reader.hpp"
#include "run/recipe_run.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

/// A person at work, without a window: what they do is heard by a history.
class HistoryTest : public testing::Test {
 protected:
  TemporaryDirectory directory_;
  ScriptedQuestions person_;
  History history_{person_};
  Workbench workbench_{history_.Recording()};
  std::string input_ = directory_.Path("walk.vmb");

  void SetUp() override {
    history_.Attach(workbench_);
    WriteTrialFile(input_, [](Trial& trial) {
      SetChannels(trial, NoiseChannels(3, 500), 200.0);
      trial.TrialTitle = "7 noises";
    });
  }

  void Do(const char* id) { RunCommand(workbench_, *FindCommand(id)); }
  void Load() {
    workbench_.trial.FileName = input_;
    Do("file.load");
  }
  /// The trial as a file of its own, without a trace in the history of what was done.
  std::string Bytes(const std::string& name) {
    person_.fileAnswers.push_back({directory_.Path(name)});
    Do("save.vmb");
    return ReadFile(directory_.Path(name));
  }
  std::vector<std::string> Words() const {
    std::vector<std::string> words;
    for (const RecordedStep& step : history_.Steps()) {
      words.push_back(step.words);
    }
    return words;
  }
  /// Runs the recipe in a fresh program on the same input, with results in `out`.
  void Replay(const std::string& out) {
    Variables variables = {{"out", directory_.Path(out)}};
    std::filesystem::create_directories(directory_.Path(out));
    SetInputVariables(variables, input_);
    RecipeRun run({.input = input_, .strict = true});
    const Outcome outcome = run.Run(ReadRecipe(history_.Recipe(), "history", variables));
    ASSERT_FALSE(outcome.failure) << PlaceText(outcome.failure->at) << ": " << outcome.failure->why << "\n"
                                  << history_.Recipe();
  }

  void Filter() {
    person_.FillForm({{"optFilter", "1"}, {"FilterCutoffs 2", "12.5"}}, "All");
    person_.FillForm({{"FilterCutoffs 3", "0"}, {"ZeroLag 1", "false"}}, "Filter");
    Do("smooth.butterworth");
  }
  void Scale() {
    person_.PickValues({{1, "0.1"}, {3, "-2.5e-3"}});
    Do("math.multiply");
  }
  void Crop() {
    person_.FillForm({{"channels 1", "true"}});
    Do("graph.single");
    auto& view = OpenSingleView(workbench_);
    view.Drawing().Abscissa.SetMinMax(0.3, 1.1);  // zoomed with the wheel, which nobody writes down
    view.PressKey({.name = "2"});
    for (const double x : {0.5, 0.6, 0.7}) {
      view.MoveCursor(2, x);
    }
    person_.FillForm({});
    Do("crop.outside");
    CloseView(workbench_);
  }
};

TEST_F(HistoryTest, SavedAsRecipeItRepeatsToTheSameBits) {
  // What earlier trials left behind is not there when the recipe runs.
  workbench_.smoothing.WindowWidth = 17;
  workbench_.filters.FilterCutoffs.fill(3.0F);
  workbench_.chooser.ChanConst.fill(7.0F);
  Load();
  Filter();
  Scale();
  person_.FillForm({{"channels 2", "true"}});
  Do("smooth.moving-average");
  person_.PickNames({{2, "Knee: \"left\", 100 %"}});
  Do("edit.labels");
  Crop();
  person_.inputAnswers = {"8 noises at $5, ${input} and ${"};
  Do("edit.title");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/walk-done.vmb")), bytes);
  EXPECT_TRUE(person_.formAnswers.empty());
}

TEST_F(HistoryTest, TellsInWordsWhatWasDoneAndLeavesOutWhatWasNot) {
  Load();
  person_.PickCancel();
  Do("math.absolute");
  person_.PickChannels({1, 3});
  Do("math.absolute");
  Filter();
  Do("file.refresh");
  person_.fileAnswers.push_back({"/no/such/directory/x.vmb"});
  Do("save.vmb");
  Crop();
  const std::vector<std::string> words = Words();
  ASSERT_GE(words.size(), 6U);
  EXPECT_EQ(words[1], "Absolute value (|X|), channels 00 and 02");
  EXPECT_TRUE(words[2].starts_with("Filter, Critically-damped, Low-pass, Cutoff 12.5 Hz, channel 01"))
      << words[2];
  EXPECT_EQ(words[3].substr(0, 15), "Select Channels");
  EXPECT_EQ(std::count(words.begin(), words.end(), "Cursor 2 at 0.700"), 1);
  Load();
  EXPECT_EQ(history_.Steps().size(), 1U);
}

TEST_F(HistoryTest, GoesBackByReadingTheFileAgain) {
  Load();
  Scale();
  const std::string scaled = Bytes("scaled.vmb");
  Filter();
  EXPECT_NE(Bytes("filtered.vmb"), scaled);
  workbench_.trial.FileName = directory_.Path("selected-in-the-browser.vmb");
  std::filesystem::remove(directory_.Path("scaled.vmb"));
  EXPECT_EQ(history_.GoBack(2), "");  // load, scale, save
  EXPECT_EQ(history_.Steps().size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(directory_.Path("scaled.vmb")));  // nothing is saved again
  EXPECT_EQ(Bytes("back.vmb"), scaled);

  std::filesystem::last_write_time(input_,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  Scale();
  EXPECT_NE(history_.GoBack(0).find("is not what it was"), std::string::npos);
  EXPECT_EQ(workbench_.trial.NData, 500);
}

}  // namespace
}  // namespace velmora::test
