#include "events/event_table.hpp"

#include <gtest/gtest.h>

#include "events/event_files.hpp"
#include "support/command_test.hpp"
#include "support/full_disk.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

double On(const EventMemory& events, std::size_t record, int channel) {
  return events.ChannelEvents.at(record - 1)[channel].on;
}

// Records of which channel 1 has the number for its time.
EventMemory Numbered(int records) {
  EventMemory events;
  StartTracking(events, false);
  RecordEvent(events, 1, {1, EventTimes::kNone});
  for (int k = 2; k <= records; ++k) {
    AddEvent(events);
    RecordEvent(events, 1, {static_cast<double>(k), EventTimes::kNone});
  }
  return events;
}

TEST(EventTable, DeletingBlanksTheCurrentRecordAndDropsTheLast) {
  EventMemory events = Numbered(5);
  GoToEvent(events, 2);
  DeleteEvent(events);
  EXPECT_EQ(events.NEvents(), 4);
  EXPECT_EQ(events.CurrentEvent, 2);
  EXPECT_EQ(On(events, 2, 1), EventTimes::kNone);
  EXPECT_EQ(On(events, 4, 1), 4);
  EXPECT_FALSE(HoldsTimes(events));
  GoToEvent(events, 4);
  DeleteEvent(events);
  EXPECT_EQ(events.CurrentEvent, 3);
  EventMemory one = Numbered(1);
  DeleteEvent(one);
  EXPECT_EQ(one.NEvents(), 1);
  EXPECT_FALSE(HoldsTimes(one));
}

TEST(EventTable, ARecordIsAddedAtTheEndAndTheDistanceSteppedBackStays) {
  EventMemory events = Numbered(3);
  PreviousEvent(events);
  PreviousEvent(events);
  PreviousEvent(events);
  EXPECT_EQ(events.CurrentEvent, 1);
  AddEvent(events);
  EXPECT_EQ(events.CurrentEvent, 2);
  for (int c = 1; c <= kMaxChannels; ++c) {
    EXPECT_EQ(events.ChannelEvents[3][c].on, -1.0);
    EXPECT_EQ(events.ChannelEvents[3][c].off, -1.0);
  }
  for (int k = 0; k < 3; ++k) {
    NextEvent(events);
  }
  EXPECT_EQ(events.CurrentEvent, 4);
  EXPECT_THROW(GoToEvent(events, 5), std::out_of_range);
  StopTracking(events);
  EXPECT_EQ(events.NEvents() + events.CurrentEvent, 0);
}

struct EventFilesTest : FileTest {
  EventFilesTest() {
    SetChannels(trial, {{10, 20, 30, 40, 50}, {-1, -2, -3, -4, -5}}, 10);
    trial.ChanLabel[1] = "  Biceps";
    trial.ChanLabel[2] = "Tri\tceps";
    trial.ChanUnits[1] = "mV";
    trial.FileName = "jump.csv";
    trial.TrialName = "jump";
    workbench.DataDir = "/data/";
  }
  std::string Saved(const char* name) const { return ReadFile(directory.Path(name)); }
};

TEST_F(EventFilesTest, ATableWithAmplitudesIsWrittenRowByRow) {
  EventMemory& events = workbench.events;
  StartTracking(events, true);
  RecordEvent(events, 1, {0.2, 0.25});  // samples 2 and, of 2.5, 2: the amplitude's index has no +1
  AddEvent(events);
  RecordEvent(events, 2, {0.0, 9.0});  // at 0 the first sample; behind the trial none
  questions.fileAnswers.push_back({directory.Path("jump.vmv")});
  SaveChannelEvents(workbench);
  EXPECT_EQ(Saved("jump.vmv"),
            "Filename:\t/data/jump.csv\r\nTrial code:\tjump\tTrial:\t-1\r\nDuration=\t0.400\ts\r\n"
            "Rate=\t10.00\tHz\r\n\r\n"
            " N\tEvents  \tBiceps\tTri ceps\r\n"
            " 1\tOn  time\t0.200\t.\r\n 1\t    amp.\t20.0000\t.\r\n"
            " 1\tOff time\t0.250\t.\r\n 1\t    amp.\t20.0000\t.\r\n"
            " 2\tOn  time\t.\t0.000\r\n 2\t    amp.\t.\t-1.0000\r\n"
            " 2\tOff time\t.\t9.000\r\n 2\t    amp.\t.\t.\r\n");
  EXPECT_FALSE(events.EventsUnsaved);
  EXPECT_EQ(questions.files.back().defaultName, "jump.vmv");
  events.EventAmplitudes = false;
  EXPECT_EQ(ChannelEventsText(workbench).find("amp."), std::string::npos);
}

TEST_F(EventFilesTest, WhatCannotBeWrittenStaysInTheTable) {
  SaveChannelEvents(workbench);
  EXPECT_EQ(LastBox().substr(0, 18), "No Events Recorded");
  StartTracking(workbench.events, false);
  RecordEvent(workbench.events, 1, {0.1, 0.2});
  questions.fileAnswers.push_back({});
  SaveChannelEvents(workbench);
  EXPECT_TRUE(workbench.events.EventsUnsaved);
  EXPECT_TRUE(workbench.report.failures.empty());
  WriteFile(directory.Path("old.vmv"), "as it was");
  {
    const FullDisk full(16);
    questions.fileAnswers.push_back({directory.Path("old.vmv")});
    SaveChannelEvents(workbench);
  }
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(Saved("old.vmv"), "as it was");
  EXPECT_TRUE(workbench.events.EventsUnsaved);
  EXPECT_EQ(On(workbench.events, 1, 1), 0.1);
}

TEST_F(EventFilesTest, AnotherFileIsLoadedOnlyWhenTheEventsMayGo) {
  WriteTrialFile(directory.Path("b.vmb"), [](Trial& made) { SetChannels(made, {{1, 2, 3}}, 10); });
  WriteTrialFile(directory.Path("c.vmb"), [](Trial& made) { SetChannels(made, {{1, 2}}, 10); });
  LoadPath(directory.Path("b.vmb"));
  ASSERT_EQ(trial.NData, 3);
  StartTracking(workbench.events, false);
  RecordEvent(workbench.events, 1, {0.1, 0.2});
  questions.boxAnswers = {Button::Cancel};
  LoadPath(directory.Path("c.vmb"));
  EXPECT_EQ(trial.NData, 3);
  EXPECT_EQ(trial.FileName, directory.Path("b.vmb"));
  EXPECT_TRUE(workbench.events.EventsUnsaved);
  // Yes saves under the name of the trial that is left; a dialogue that is called off stays.
  questions.boxAnswers = {Button::Yes};
  questions.fileAnswers.push_back({});
  LoadPath(directory.Path("c.vmb"));
  EXPECT_EQ(questions.files.back().defaultName, "b.vmv");
  EXPECT_EQ(trial.NData, 3);
  questions.boxAnswers = {Button::Yes};
  questions.fileAnswers.push_back({directory.Path("b.vmv")});
  LoadPath(directory.Path("c.vmb"));
  EXPECT_EQ(trial.NData, 2);
  EXPECT_FALSE(workbench.events.EventTracking);
  EXPECT_EQ(workbench.events.NEvents(), 0);
  EXPECT_HAS(Saved("b.vmv"), "Filename:\t" + directory.Path("b.vmb"));
}

TEST_F(EventFilesTest, CursorsOfTheSingleAxisGraphBecomeEvents) {
  for (int i = 1; i <= 5; ++i) {
    trial.Data(i, 0) += 2;  // a stretch cropped out of a longer one
  }
  Run("graph.all");
  Run("cursor.two");
  ASSERT_NE(workbench.view, nullptr);
  workbench.view->MoveCursor(1, 2.3);
  workbench.view->MoveCursor(2, 2.0);
  questions.fileAnswers.push_back({directory.Path("jump.evt")});
  Run("view.save-events");
  EXPECT_EQ(Saved("jump.evt"),
            "File:\t/data/jump.csv\nRate:\t10\tTrial#:\t-1\nEvent\tSample\tTime\tBiceps\tTri ceps\n"
            "#\tn\ts\tmV\tV\n1\t4\t2.30000\t40.0000 \t-4.0000 \n2\t1\t2.00000\t10.0000 \t-1.0000 \n");
}

}  // namespace
}  // namespace velmora::test
