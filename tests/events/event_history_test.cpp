#include "events/event_files.hpp"
#include "graph/multi/multi_view.hpp"
#include "run/history/history.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

/// What a person does with thresholds and events is heard by a history.
class EventHistoryTest : public testing::Test {
 protected:
  TemporaryDirectory directory_;
  ScriptedQuestions person_;
  History history_{person_};
  Workbench workbench_{history_.Recording()};
  std::string input_ = directory_.Path("walk.vmb");

  void SetUp() override {
    history_.Attach(workbench_);
    WriteTrialFile(input_, [](Trial& trial) {
      auto channels = NoiseChannels(2, 600);
      for (std::size_t i = 200; i < 300; ++i) {
        channels[0][i] += 20.0F;
        channels[1][i + 50] += 30.0F;
      }
      SetChannels(trial, channels, 100.0);
      trial.TrialTitle = "7 bursts";
    });
    workbench_.trial.FileName = input_;
    Do("file.load");
  }
  void Do(const char* id) { RunCommand(workbench_, *FindCommand(id)); }
  void Press(const char* key) { workbench_.view->PressKey({.name = key}); }

  void RecordTwoEvents() {
    person_.FillForm({{"channels 1", "true"}, {"channels 2", "true"}});
    Do("graph.multi");
    OpenMultiView(workbench_).Click(1);
    Press("2");
    Span(0, 1.5);
    person_.inputAnswers = {"2.5"};
    person_.PickCancel();  // they are only shown
    Do("threshold.calculate");
    Do("grid.thresholds");
    for (const double y : {4.0, 5.5, 6.25}) {
      workbench_.view->MoveThreshold(1, y);
    }
    person_.boxAnswers = {Button::Yes, Button::Yes};
    Press("T");
    Press("F9");
    Span(1.6, 4.5);
    Press("O");
    workbench_.view->MoveCursor(4, 2.05, 1);
    workbench_.view->MoveCursor(4, 2.08, 1);
    workbench_.view->RightClick(1);
    Press("Insert");
    Span(2.2, 2.7);
    workbench_.view->DoubleClick(2);
  }
  void Span(double from, double to) {
    workbench_.view->MoveCursor(1, from);
    workbench_.view->MoveCursor(2, to);
  }
  /// The table that the recorded recipe makes in a program just started.
  std::string Replayed() {
    Variables variables = {{"out", directory_.Path("")}};
    SetInputVariables(variables, input_);
    RecipeRun run({.input = input_, .strict = true});
    const Outcome outcome = run.Run(ReadRecipe(history_.Recipe(), "history", variables));
    EXPECT_FALSE(outcome.failure) << outcome.failure->why << "\n" << history_.Recipe();
    return ChannelEventsText(run.State());
  }
};

TEST_F(EventHistoryTest, ARecipeOfTheHistoryRecordsTheSameEvents) {
  RecordTwoEvents();
  const std::string table = ChannelEventsText(workbench_);
  EXPECT_EQ(workbench_.events.ChannelEvents[0][1].on, 2.08);
  EXPECT_EQ(workbench_.thresholds.ChanThreshold[1], 6.25);
  const std::string recipe = history_.Recipe();
  EXPECT_NE(recipe.find("{threshold: 1, y: 6.25}"), std::string::npos) << recipe;
  EXPECT_EQ(recipe.find("4.0"), std::string::npos) << "a drag is one move";
  EXPECT_EQ(Replayed(), table);
}

TEST_F(EventHistoryTest, ThatTrackingEndedByMistakeIsGoneBackBehind) {
  RecordTwoEvents();
  const std::string table = ChannelEventsText(workbench_);
  Press("F9");
  EXPECT_EQ(workbench_.events.NEvents(), 0);
  EXPECT_EQ(history_.Lines().back().words, "Event tracking ended, 2 records discarded unsaved");
  EXPECT_EQ(history_.GoTo(history_.Lines().size() - 2), "");
  EXPECT_EQ(ChannelEventsText(workbench_), table);
  EXPECT_TRUE(workbench_.events.EventsUnsaved);
}

TEST_F(EventHistoryTest, ALoadThatIsCalledOffLeavesTheHistory) {
  RecordTwoEvents();
  const std::size_t lines = history_.Lines().size();
  person_.boxAnswers = {Button::Cancel};
  workbench_.trial.FileName = directory_.Path("other.vmb");
  Do("file.load");
  EXPECT_EQ(history_.Lines().size(), lines);
  EXPECT_EQ(workbench_.events.NEvents(), 2);
  // The answers about the trial that is left are no part of the next one's history.
  person_.boxAnswers = {Button::No};
  workbench_.trial.FileName = input_;
  Do("file.load");
  EXPECT_EQ(history_.Lines().size(), 1U);
  EXPECT_EQ(history_.Recipe().find("answers"), std::string::npos) << history_.Recipe();
}

}  // namespace
}  // namespace velmora::test
