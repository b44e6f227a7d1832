#include <gtest/gtest.h>

#include <cmath>

#include "core/text/numbers.hpp"
#include "support/command_test.hpp"
#include "support/recipe_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

/// Three channels of 21 samples at 10 Hz on three graphs. At rest, in samples 1 to 4, the first alternates
/// between 1 and 3 (mean 2, deviation sqrt(4/3)), the second is 0 and then -0.5, the third alternates around
/// -2. The first two have a burst in samples 8 to 12, the second one of its own in 15 to 17, the third goes
/// down in 9 to 13.
class EventViewsTest : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    std::vector<float> first;
    std::vector<float> second;
    std::vector<float> third;
    for (int i = 1; i <= 21; ++i) {
      const float hum = i % 2 == 1 ? 1.0F : 3.0F;
      first.push_back(i >= 8 && i <= 12 ? 10.0F : hum);
      second.push_back((i >= 8 && i <= 12) || (i >= 15 && i <= 17) ? 5.0F : i <= 4 ? 0.0F : -0.5F);
      third.push_back(i >= 9 && i <= 13 ? -10.0F : -hum);
    }
    SetChannels(trial, {first, second, third}, 10);
    trial.TrialName = "walk";
    trial.FileName = "walk.csv";
    for (int c = 1; c <= 3; ++c) {
      trial.ChanLabel[c] = "EMG " + std::to_string(c);
    }
  }
  static constexpr const char* kOpen =
      "  - do: graph.multi\n    answers: [form: {channels: all}]\n"
      "  - view: {click: 1}\n";
  static constexpr const char* kRest =
      "  - view: {key: \"2\"}\n  - view: {move: 1, x: 0}\n"
      "  - view: {move: 2, x: 0.3}\n";
  static constexpr const char* kThresholds =
      "  - do: threshold.calculate\n    answers:\n      - {title: Threshold Magnitude, input: \"2\"}\n"
      "      - pick: {press: Process}\n";
  // In channel 1, from 0.7 to 1.2 s.
  static constexpr const char* kOneEvent =
      "  - view: {key: F9}\n    answers: [box: \"No\"]\n"
      "  - view: {move: 1, x: 0.5}\n  - view: {move: 2, x: 2}\n"
      "  - view: {key: O}\n  - view: {right-click: 1}";
  void RunAll(const std::string& steps) {
    Run(kOpen + std::string(kRest) + kThresholds + steps);
    ASSERT_EQ(Why(), "all ran");
  }
};

TEST_F(EventViewsTest, ThresholdsOfAStretchAtRestAreCalculatedShownAndChanged) {
  RunAll(R"(
  - info: "${out}/calculated.json"
  - do: grid.thresholds
  - do: threshold.sd-level
    answers: [input: "-3", pick: {}]
  - info: "${out}/level.json"
  - view: {threshold: 1, y: 7.5}
  - view: {key: T}
    answers: [{title: Change Threshold., box: "Cancel"}]
  - view: {key: T}
    answers: [{title: Change Threshold., box: "Yes"}]
  - view: {click: 3}
  - view: {key: T}
    answers: [{title: Change Threshold., box: "No"}]
  - info: "${out}/changed.json"
  - do: threshold.edit
    answers: [pick: {values: {2: 1.25}}]
  - do: threshold.save
    answers: [file: "${out}/walk.vmu"]
  - do: threshold.edit
    answers: [pick: {values: {1: 99, 2: 99, 3: 99}}]
  - do: threshold.read
    answers: [file: "${out}/walk.vmu"]
  - info: "${out}/read.json"
  - do: threshold.display
  - view: {key: T}
    answers: [{title: Change Threshold, box: "No"}]
  - do: threshold.change
  - info: "${out}/edited.json"
)");
  const double sd = std::sqrt(4.0 / 3.0);
  const json calculated = Info("calculated.json");
  EXPECT_EQ(calculated["ThresholdsValid"], -1);
  EXPECT_EQ(calculated["channels"][1]["ChanMean"], 2.0);
  EXPECT_NEAR(calculated["channels"][1]["ChanSD"], sd, 1e-15);
  EXPECT_EQ(calculated["channels"][1]["ChanThreshold"],
            2 * calculated["channels"][1]["ChanSD"].get<double>() + 2);
  EXPECT_EQ(calculated["channels"][2]["ChanThreshold"], 0.0);
  EXPECT_EQ(calculated["FileChanged"], 0);
  const json level = Info("level.json");
  EXPECT_EQ(level["SDMultiplier"], -3.0);
  EXPECT_NEAR(level["channels"][1]["ChanThreshold"], 2 - 3 * sd, 1e-12);
  // The third line of a graph's list, behind the two cursors.
  const json& line = level["view"]["graphs"][2]["cursors"][2];
  EXPECT_EQ(line["kind"], "threshold");
  EXPECT_EQ(line["y"], level["channels"][3]["ChanThreshold"]);
  const json changed = Info("changed.json");
  EXPECT_EQ(changed["channels"][1]["ChanThreshold"], 7.5);
  // 32 bits at the last: -3 * SD + mean of the third.
  EXPECT_EQ(
      changed["channels"][3]["ChanThreshold"],
      static_cast<double>(-3.0F * static_cast<float>(changed["channels"][3]["ChanSD"].get<double>()) - 2.0F));
  EXPECT_EQ(changed["view"]["graphs"][2]["cursors"][2]["y"], changed["channels"][3]["ChanThreshold"]);
  const json edited = Info("edited.json");
  EXPECT_EQ(edited["channels"][2]["ChanThreshold"], 1.25);
  EXPECT_EQ(edited["channels"][1]["ChanThreshold"], 7.5);
  EXPECT_EQ(edited["view"]["graphs"][0]["cursors"].size(), 2U);
  const json read = Info("read.json");
  for (const std::size_t c : {1U, 2U, 3U}) {  // saved to the last digit
    const json& kept = edited["channels"][c]["ChanThreshold"];
    EXPECT_EQ(read["channels"][c]["ChanThreshold"], kept) << c;
    EXPECT_EQ(read["view"]["graphs"][c - 1]["cursors"][2]["y"], kept) << c;
  }
  const json asked = json::parse(lines_.at(lines_.size() - 2));
  EXPECT_EQ(asked["text"], "Do you want to change the threshold for the channel in graph 3 to -5.4641");
  EXPECT_EQ(json::parse(lines_.back())["text"], "Click on the graph to be changed, then press T.");
}

TEST_F(EventViewsTest, BurstAfterBurstIsFoundCorrectedRecordedAndSaved) {
  RunAll(R"(
  - do: grid.thresholds
  - view: {key: F9}
    answers: [{title: Start Onset/Event Recording, box: "Yes"}]
  - view: {move: 1, x: 1.9}
  - view: {move: 2, x: 0.5}
  - view: {key: O}
  - info: "${out}/found.json"
  - view: {move: 5, x: 1.0, graph: 1}
  - view: {right-click: 2}
  - view: {key: Insert}
  - view: {move: 1, x: 1.3}
  - view: {key: O}
  - view: {double-click: 2}
  - info: "${out}/second.json"
  - view: {key: Insert}
  - do: cursor.remove-onsets
  - view: {key: "1"}
  - view: {move: 1, x: 0.25}
  - do: event.store
  - view: {key: ctrl+End}
  - view: {right-click: 1}
    answers: [{title: Record All Events, box: "No"}]
  - info: "${out}/third.json"
  - view: {key: F10}
    answers: [file: "${out}/walk.vmv"]
  - info: "${out}/saved.json"
  - view: {key: Delete}
    answers: [{title: "Delete Last Event?", box: "Yes"}]
  - view: {key: F9}
  - info: "${out}/ended.json"
)");
  // The cursors were exchanged; the third channel's burst is downwards from its positive threshold: none.
  const json found = Info("found.json");
  EXPECT_EQ(found["StatLo"], 6);
  EXPECT_EQ(found["StatHi"], 20);
  EXPECT_EQ(found["view"]["graphs"][0]["cursors"][0]["x"], 0.5);
  const json& cursors = found["view"]["graphs"][1]["cursors"];
  ASSERT_EQ(cursors.size(), 5U);
  EXPECT_EQ(cursors[3]["x"], static_cast<double>(0.7F));
  EXPECT_EQ(cursors[3]["kind"], "onset");
  EXPECT_EQ(cursors[4]["x"], static_cast<double>(1.2F));
  EXPECT_EQ(cursors[4]["kind"], "offset");
  EXPECT_EQ(found["view"]["graphs"][2]["cursors"].size(), 3U);

  const json second = Info("second.json");
  const json& events = second["ChannelEvents"];
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0][0], json({0.7, 1.0}));  // the offset where it was dragged to
  EXPECT_EQ(events[0][1], json({0.7, 1.2}));
  EXPECT_EQ(events[0][2], json({0.5, 1.9}));  // no onset: the cursors
  EXPECT_EQ(events[0][3], json({-1.0, -1.0}));
  EXPECT_EQ(events[1][0], json({-1.0, -1.0}));
  EXPECT_EQ(events[1][1], json({1.4, 1.7}));
  EXPECT_EQ(second["EventsUnsaved"], -1);
  EXPECT_EQ(second["view"]["sidebar"][1],
            "Channel #01:  EMG 2  Event:2 of2.    1= 1.400 s,  5.000 V;  2= 1.700 s,  -0.500 V");
  const json third = Info("third.json");
  EXPECT_EQ(third["ChannelEvents"][2][0], json({0.25, -1.0}));
  EXPECT_EQ(third["CurrentEvent"], 2);
  EXPECT_EQ(third["ChannelEvents"][1][0], json({-1.0, -1.0}));
  EXPECT_EQ(third["CursorLo"], 1);
  const std::string file = ReadFile(directory_.Path("walk.vmv"));
  EXPECT_HAS(file, " 1\tOff time\t1.000\t1.200\t1.900\r\n 1\t    amp.\t10.0000\t5.0000\t-1.0000\r\n");
  EXPECT_EQ(Info("saved.json")["EventsUnsaved"], 0);
  EXPECT_EQ(Info("ended.json")["NEvents"], 0);
  EXPECT_EQ(Info("ended.json")["EventTracking"], 0);
}

TEST_F(EventViewsTest, UnsavedEventsKeepTheViewUntilTheyMayGo) {
  RunAll(R"(
  - view: {key: F9}
    answers: [box: "Yes"]
  - view: {double-click: 1}
  - view: {close: true}
    answers: [{title: Events Not Saved, box: "Cancel"}]
  - do: view.exit
    answers: [{title: Events Not Saved, box: "Yes"}, file: ""]
  - info: "${out}/stayed.json"
  - view: {close: true}
    answers: [{title: Events Not Saved, box: "No"}]
  - info: "${out}/left.json"
  - do: file.exit
    answers: [{title: Events Not Saved, box: "Yes"}, file: "${out}/walk.vmv"]
  - info: "${out}/again.json"
)");
  EXPECT_TRUE(Info("stayed.json").contains("view"));
  const json left = Info("left.json");
  EXPECT_FALSE(left.contains("view"));
  EXPECT_EQ(left["NEvents"], 1);
  EXPECT_EQ(left["EventsUnsaved"], -1);
  EXPECT_EQ(Info("again.json")["EventsUnsaved"], 0);
}

TEST_F(EventViewsTest, WithoutWhatTheyNeedCommandsDoNothing) {
  Run(kOpen + std::string(R"(
  - do: cursor.onsets
  - do: threshold.display
  - do: threshold.sd-level
  - do: threshold.change
  - do: threshold.save
  - view: {key: Insert}
  - view: {key: Delete}
  - view: {key: ctrl+Home}
  - view: {right-click: 1}
  - view: {key: F9}
    answers: [box: "Cancel"]
  - view: {key: F9}
    answers: [box: "No"]
  - view: {double-click: 2}
  - info: "${out}/nothing.json"
  - view: {key: T}
  - view: {key: F10}
)"));
  ASSERT_EQ(Why(), "all ran");
  const json nothing = Info("nothing.json");
  EXPECT_EQ(nothing["EventsUnsaved"], 0);
  EXPECT_EQ(nothing["EventAmplitudes"], 0);
  EXPECT_EQ(nothing["NEvents"], 1);
  EXPECT_EQ(nothing["ThresholdsValid"], 0);
  EXPECT_EQ(json::parse(lines_.at(lines_.size() - 2))["title"], "Thresholds Not Calculated");
  EXPECT_EQ(json::parse(lines_.back())["title"], "No Events Recorded");
  Run(kOpen + std::string("  - view: {threshold: 1, y: 1}\n"));
  EXPECT_EQ(Why(), "there is no threshold line in graph 1");
}

// Its lines are no cursors: what is selected, saved and counted stays.
TEST_F(EventViewsTest, TheSingleAxisGraphShowsALineForEachChannel) {
  Run(kOpen + std::string(kRest) + kThresholds + R"(
  - do: graph.single
    answers: [form: {channels: [1, 3]}]
  - do: grid.thresholds
  - view: {key: "2"}
  - view: {move: 1, x: 0.5}
  - info: "${out}/lines.json"
  - do: window-stats.emg
    answers:
      - form: {press: Calculate thresholds}
      - input: "4"
      - pick: {}
      - form: {press: Exit}
  - info: "${out}/emg.json"
  - do: view.save-events
    answers: [file: "${out}/walk.evt"]
  - do: grid.thresholds
  - info: "${out}/none.json"
)");
  ASSERT_EQ(Why(), "all ran");
  const json lines = Info("lines.json");
  ASSERT_EQ(lines["view"]["cursors"].size(), 4U);
  EXPECT_EQ(lines["view"]["cursors"][2]["y"], lines["channels"][1]["ChanThreshold"]);
  EXPECT_EQ(lines["view"]["cursors"][3]["y"], lines["channels"][3]["ChanThreshold"]);
  EXPECT_EQ(lines["CursorLo"], 6);
  const json emg = Info("emg.json");
  EXPECT_NE(emg["channels"][1]["ChanThreshold"], lines["channels"][1]["ChanThreshold"]);
  EXPECT_EQ(emg["view"]["cursors"][2]["y"], emg["channels"][1]["ChanThreshold"]);
  const std::string events = ReadFile(directory_.Path("walk.evt"));
  EXPECT_EQ(std::count(events.begin(), events.end(), '\n'), 6);  // two cursors
  EXPECT_EQ(Info("none.json")["view"]["cursors"].size(), 2U);
}

// Channel 2 is not shown, and graphs 2 and 3 have no channel.
TEST_F(EventViewsTest, GapsAmongTheGraphsAndChannelsLeftOutStayEmpty) {
  Run(R"(
  - do: graph.multi
    answers: [form: {channels: [1, 3], chkCombinations: true, txtChannels: {1: 1, 3: 4}}]
  - view: {click: 4}
)" + std::string(kRest) +
      kThresholds + R"(
  - do: grid.thresholds
  - view: {threshold: 4, y: 1}
  - view: {key: F9}
    answers: [box: "Yes"]
  - view: {move: 2, x: 2}
  - view: {key: O}
  - view: {right-click: 4}
  - view: {key: T}
    answers: [box: "Yes"]
  - do: crop.select
    answers: [form: {CursorLo: 1, CursorHi: 2, press: Crop}]
  - info: "${out}/gaps.json"
  - view: {key: F10}
    answers: [file: "${out}/walk.vmv"]
)");
  ASSERT_EQ(Why(), "all ran");
  const json gaps = Info("gaps.json");
  EXPECT_EQ(gaps["NData"], 2);
  EXPECT_EQ(gaps["channels"][3]["ChanThreshold"], 1.0);
  EXPECT_EQ(gaps["ChannelEvents"][0][0], json({0.7, 1.2}));
  EXPECT_EQ(gaps["ChannelEvents"][0][1], json({-1.0, -1.0}));
  EXPECT_EQ(gaps["ChannelEvents"][0][2], json({0.0, 2.0}));
  // What was recorded lies behind the end of the trial now: times without amplitudes.
  EXPECT_NE(gaps["view"]["sidebar"][0].get<std::string>().find("1= 0.700 s,  . V"), std::string::npos)
      << gaps["view"]["sidebar"][0];
  EXPECT_HAS(ReadFile(directory_.Path("walk.vmv")), " 1\t    amp.\t.\t.\t-1.0000\r\n");
  Run("  - view: {click: 1}\n");
  EXPECT_HAS(Why(), "no graph is open");
  Run(kOpen + std::string("  - view: {threshold: 9, y: 1}\n"));
  EXPECT_EQ(Why(), "there is no graph 9, but 3");
}

TEST_F(EventViewsTest, WhatWasRecordedAndMarkedStaysOnItsSamplesThroughCrops) {
  RunAll(std::string(kOneEvent) + R"(
  - do: value.extreme-times
  - do: crop.select
    answers: [form: {CursorLo: 5, CursorHi: 15, ClipResetTime: true, press: Crop}]
  - info: "${out}/cropped.json"
  - view: {key: Insert}
  - view: {right-click: 1}
  - view: {move: 1, x: 0.2}
  - view: {move: 2, x: 0.4}
  - do: crop.cut
    answers: [form: {press: Cut}]
  - info: "${out}/cut.json"
)");
  const auto times = [](const json& info, std::size_t record) {
    const json& pair = info["ChannelEvents"][record][0];
    return FormatNumber(pair[0].get<double>(), "0.000") + " " + FormatNumber(pair[1].get<double>(), "0.000");
  };
  // 0.7 to 1.2 s, and 0.4 s went.
  const json cropped = Info("cropped.json");
  EXPECT_EQ(times(cropped, 0), "0.300 0.800");
  const json& marks = cropped["view"]["graphs"][0]["cursors"];
  ASSERT_EQ(marks.size(), 4U) << "two cursors, onset and offset; the values told times that are others now";
  EXPECT_NEAR(marks[2]["x"], 0.3, 1e-6);
  EXPECT_NEAR(marks[3]["x"], 0.8, 1e-6);
  const json cut = Info("cut.json");
  EXPECT_EQ(times(cut, 1), "-1.000 0.500") << "the onset was among the three samples";
  EXPECT_EQ(cut["view"]["graphs"][0]["cursors"].size(), 2U);
  EXPECT_HAS(cut["Notices"][0].get<std::string>(),
             "recorded times of events lay in the samples that were removed");
}

// What a time counts changes with the abscissa, and which sample it is with the samples.
TEST_F(EventViewsTest, RecordedEventsStayOnTheirSamplesWhateverTheAbscissaCounts) {
  RunAll(std::string(kOneEvent) + R"(
  - view: {close: true}
    answers: [box: "No"]
  - do: timebase.percentage
  - info: "${out}/percent.json"
  - do: time.reverse
  - do: time.normalize
    answers: [input: 40]
  - info: "${out}/reversed.json"
  - do: timebase.count
  - info: "${out}/count.json"
  - do: timebase.seconds
  - do: edit.sampling-rate
    answers: [input: 40]
  - info: "${out}/rate.json"
)");
  const auto times = [this](const char* name) {
    const json pair = Info(name)["ChannelEvents"][0][0];
    return FormatNumber(pair[0].get<double>(), "0.0000") + " " +
           FormatNumber(pair[1].get<double>(), "0.0000");
  };
  // 0.7 to 1.2 s of 2 s at 10 Hz: the intervals 7 to 12 of 20, from the other end 8 to 13, and 16 to 26
  // of 40.
  EXPECT_EQ(times("percent.json"), "35.0000 60.0000");
  EXPECT_EQ(times("reversed.json"), "40.0000 65.0000");
  EXPECT_EQ(times("count.json"), "16.4000 26.6500") << "at a rate of 40 / 41";
  EXPECT_EQ(times("rate.json"), "0.4000 0.6500");
}

struct OtherTrialTest : CommandTest {};

TEST_F(OtherTrialTest, ThresholdsOfAnotherTrialAreTold) {
  SetChannels(trial, {{0, 0, 5, 0}}, 10);
  workbench.LoadedFile = "/data/b.vmb";
  workbench.thresholds.ChanThreshold[1] = 1;
  workbench.thresholds.ThresholdsValid = true;
  workbench.thresholds.ThresholdsOf = "/data/a.vmb";
  questions.FillForm({{"channels 1", "true"}});
  Run("graph.multi");
  Run("cursor.two");
  workbench.view->MoveCursor(1, 0);
  workbench.view->MoveCursor(2, 0.3);
  Run("cursor.onsets");
  ASSERT_EQ(trial.Notices.size(), 1U);
  EXPECT_EQ(trial.Notices[0], "The thresholds are those of a.vmb.");
}

// A region of one sample has no deviation, one with NaN neither: that is told, and no onset is found.
TEST_F(EventViewsTest, ThresholdsThatAreNoNumbersAreTold) {
  Run(kOpen + std::string("  - view: {key: \"1\"}\n  - view: {move: 1, x: 0}\n") + kThresholds +
      "  - view: {key: \"2\"}\n  - view: {move: 2, x: 2}\n  - view: {key: O}\n  - info: "
      "\"${out}/one.json\"\n");
  ASSERT_EQ(Why(), "all ran");
  const json one = Info("one.json");
  EXPECT_TRUE(one["channels"][1]["ChanThreshold"].is_null());
  EXPECT_EQ(one["view"]["graphs"][0]["cursors"].size(), 2U);
  ASSERT_EQ(one["Notices"].size(), 1U);
  EXPECT_HAS(one["Notices"][0].get<std::string>(), "EMG 1, EMG 2, EMG 3");
}

}  // namespace
}  // namespace velmora::test
