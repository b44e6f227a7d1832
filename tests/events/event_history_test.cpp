#include "events/event_files.hpp"
#include "graph/multi/multi_view.hpp"
#include "support/recorded_person.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

/// What a person does with thresholds and events is heard by a history.
struct EventHistoryTest : RecordedPerson {
  void SetUp() override {
    RecordedPerson::SetUp();
    WriteTrialFile(input, [](Trial& trial) {
      auto channels = NoiseChannels(2, 600);
      for (std::size_t i = 200; i < 300; ++i) {
        channels[0][i] += 20.0F;
        channels[1][i + 50] += 30.0F;
      }
      SetChannels(trial, channels, 100.0);
      trial.TrialTitle = "7 bursts";
    });
    Load();
  }
  void Press(const char* key) { workbench.view->PressKey({.name = key}); }

  void RecordTwoEvents() {
    person.FillForm({{"channels 1", "true"}, {"channels 2", "true"}});
    Do("graph.multi");
    OpenMultiView(workbench).Click(1);
    Press("2");
    Span(0, 1.5);
    person.inputAnswers = {"2.5"};
    person.PickCancel();  // they are only shown
    Do("threshold.calculate");
    Do("grid.thresholds");
    for (const double y : {4.0, 5.5, 6.25}) {
      workbench.view->MoveThreshold(1, y);
    }
    person.boxAnswers = {Button::Yes, Button::Yes};
    Press("T");
    Press("F9");
    Span(1.6, 4.5);
    Press("O");
    workbench.view->MoveCursor(4, 2.05, 1);
    workbench.view->MoveCursor(4, 2.08, 1);
    workbench.view->Click(1, Clicked::Right);
    Press("Insert");
    Span(2.2, 2.7);
    workbench.view->Click(2, Clicked::Twice);
  }
  void Span(double from, double to) {
    workbench.view->MoveCursor(1, from);
    workbench.view->MoveCursor(2, to);
  }
};

TEST_F(EventHistoryTest, ARecipeOfTheHistoryRecordsTheSameEvents) {
  RecordTwoEvents();
  const std::string table = ChannelEventsText(workbench);
  EXPECT_EQ(workbench.events.ChannelEvents[0][1].on, 2.08);
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], 6.25);
  const std::string recipe = history.Recipe();
  EXPECT_HAS(recipe, "{threshold: 1, y: 6.25}");
  EXPECT_EQ(recipe.find("4.0"), std::string::npos) << "a drag is one move";
  EXPECT_EQ(ChannelEventsText(Replay()->State()), table);
}

TEST_F(EventHistoryTest, ThatTrackingEndedByMistakeIsGoneBackBehind) {
  RecordTwoEvents();
  const std::string table = ChannelEventsText(workbench);
  Press("F9");
  EXPECT_EQ(workbench.events.NEvents(), 0);
  EXPECT_EQ(history.Lines().back().words, "Event tracking ended, 2 records discarded unsaved");
  EXPECT_EQ(history.GoTo(history.Lines().size() - 2), "");
  EXPECT_EQ(ChannelEventsText(workbench), table);
  EXPECT_TRUE(workbench.events.EventsUnsaved);
}

TEST_F(EventHistoryTest, ALoadThatIsCalledOffLeavesTheHistory) {
  RecordTwoEvents();
  const std::size_t lines = history.Lines().size();
  person.boxAnswers = {Button::Cancel};
  workbench.trial.FileName = directory.Path("other.vmb");
  Do("file.load");
  EXPECT_EQ(history.Lines().size(), lines);
  EXPECT_EQ(workbench.events.NEvents(), 2);
  // The answers about the trial that is left are no part of the next one's history.
  person.boxAnswers = {Button::No};
  Load();
  EXPECT_EQ(history.Lines().size(), 1U);
  EXPECT_EQ(history.Recipe().find("answers"), std::string::npos) << history.Recipe();
}

}  // namespace
}  // namespace velmora::test
