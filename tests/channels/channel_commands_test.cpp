#include <limits>

#include "support/command_test.hpp"
#include "support/signals.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

constexpr int kChannels = 5;

/// A number of a channel that tells which it was, in everything that is kept.
struct ChannelCommandsTest : CommandTest {
  void SetUp() override {
    std::vector<std::vector<float>> channels;
    for (int c = 1; c <= kChannels; ++c) {
      const auto x = static_cast<float>(c);
      channels.push_back({x, 10 * x, 100 * x});
    }
    SetChannels(trial, channels);
    for (int c = 1; c <= kChannels; ++c) {
      trial.ChanLabel[c] = "L" + std::to_string(c);
    }
  }

  /// Marks everything that is kept per channel, outside and inside the trial.
  void MarkAll() {
    workbench.events.ChannelEvents.resize(2);
    for (int c = 1; c <= kChannels; ++c) {
      const auto mark = static_cast<float>(c);
      const auto number = static_cast<std::int16_t>(c);
      trial.ChanUnits[c] = "U" + std::to_string(c);
      trial.ChanRate[c] = trial.ChanGain[c] = trial.ChanOffset[c] = c;
      trial.ChanNumber[c] = trial.ChanAutozero[c] = trial.ChanColour[c] = trial.ChanGraphSlot[c] = number;
      trial.SavedLabels[c] = "S" + std::to_string(c);
      FilterMemory& filters = workbench.filters;
      filters.ZeroLag[c] = c == 2;
      filters.FilterCutoffs[c] = filters.SecondCutoffs[c] = mark;
      filters.LastLowPassCutoffs[c] = filters.LastHighPassCutoffs[c] = mark;
      workbench.scaling.ScaleMemory[c] = workbench.bias.BiasMemory[c] = mark;
      ThresholdMemory& thresholds = workbench.thresholds;
      thresholds.ChanMean[c] = thresholds.ChanSD[c] = thresholds.ChanThreshold[c] = c;
      workbench.graph.GraphOfChannel[c] = number;
      workbench.events.ChannelEvents[0][c] = {mark / 100, mark / 50};
      workbench.events.ChannelEvents[1][c] = {EventTimes::kNone, mark};
    }
    trial.ForcesReduced = true;
  }

  /// Whether channel `place` is what channel `was` was, in everything; 0: nothing is known of it.
  void ExpectIs(int place, int was) {
    SCOPED_TRACE("channel " + std::to_string(place));
    const auto mark = static_cast<float>(was);
    if (was > 0) {
      EXPECT_EQ(Channel(trial, place), (Samples{mark, 10 * mark, 100 * mark}));
      EXPECT_EQ(trial.ChanLabel[place].Text(), "L" + std::to_string(was));
      EXPECT_EQ(trial.ChanUnits[place].Text(), "U" + std::to_string(was));
      EXPECT_EQ(trial.ChanRate[place], was);
      EXPECT_EQ(trial.ChanGain[place], was);
      EXPECT_EQ(trial.ChanOffset[place], was);
      EXPECT_EQ(trial.ChanNumber[place], was);
      EXPECT_EQ(trial.ChanAutozero[place], was);
      EXPECT_EQ(trial.ChanColour[place], was);
      EXPECT_EQ(trial.ChanGraphSlot[place], was);
    }
    const FilterMemory& filters = workbench.filters;
    EXPECT_EQ(filters.ZeroLag[place], was == 2);
    EXPECT_EQ(filters.FilterCutoffs[place], mark);
    EXPECT_EQ(filters.SecondCutoffs[place], mark);
    EXPECT_EQ(filters.LastLowPassCutoffs[place], mark);
    EXPECT_EQ(filters.LastHighPassCutoffs[place], mark);
    EXPECT_EQ(workbench.scaling.ScaleMemory[place], mark);
    EXPECT_EQ(workbench.bias.BiasMemory[place], mark);
    EXPECT_EQ(workbench.thresholds.ChanMean[place], was);
    EXPECT_EQ(workbench.thresholds.ChanSD[place], was);
    EXPECT_EQ(workbench.thresholds.ChanThreshold[place], was);
    EXPECT_EQ(workbench.graph.GraphOfChannel[place], was);
    const EventTimes none;
    const EventTimes first = was > 0 ? EventTimes{mark / 100, mark / 50} : none;
    EXPECT_EQ(workbench.events.ChannelEvents[0][place], first);
    EXPECT_EQ(workbench.events.ChannelEvents[1][place].off, was > 0 ? was : EventTimes::kNone);
    EXPECT_EQ(trial.SavedLabels[place].Text(), "S" + std::to_string(place));  // of the file before: they stay
  }
};

TEST_F(ChannelCommandsTest, EverythingKeptPerChannelMovesWithIt) {
  MarkAll();
  RunTyping("channel.move", {{4, "0.5"}, {1, "9"}});
  const std::vector<int> order = {4, 2, 3, 5, 1};
  for (int place = 1; place <= kChannels; ++place) {
    ExpectIs(place, order[static_cast<std::size_t>(place - 1)]);
  }
  EXPECT_FALSE(trial.ForcesReduced);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(workbench.report.deeds.back().channels, (Texts{"L1", "L4", "L5"}));
}

TEST_F(ChannelCommandsTest, WhatStaysMovesUpAndWhatGoesIsForgotten) {
  MarkAll();
  questions.boxAnswers = {Button::No, Button::Yes};
  RunPicking("channel.erase", {1, 4});
  EXPECT_HAS(LastBox(), "The channels of the reduced forces will no longer be known.");
  EXPECT_EQ(trial.NChan, 5);
  EXPECT_FALSE(trial.FileChanged);
  RunPicking("channel.erase", {1, 4});
  ASSERT_EQ(trial.NChan, 3);
  const std::vector<int> order = {2, 3, 5, 0, 0};
  for (int place = 1; place <= kChannels; ++place) {
    ExpectIs(place, order[static_cast<std::size_t>(place - 1)]);
  }
  EXPECT_FALSE(trial.ForcesReduced);
  EXPECT_EQ(workbench.LastChanShown, 3);
  EXPECT_EQ(workbench.report.deeds.back().channels, (Texts{"L1", "L4"}));
  RunPicking("channel.copy", {2});
  EXPECT_EQ(workbench.filters.FilterCutoffs[4], 0);  // a new one has no past
  RunPicking("channel.erase", {1, 2, 3, 4});
  EXPECT_EQ(LastBox(), "Cannot Erase All Channels|At least one channel must stay.");
}

TEST_F(ChannelCommandsTest, OrderIsThatOfTheValues) {
  SetChannels(trial, {{1}, {2}, {3}});
  RunTyping("channel.move", {{3, "0.5"}});
  EXPECT_EQ(trial.Data(1, 1), 3);
  EXPECT_EQ(trial.Data(1, 2), 1);
  trial.FileChanged = false;
  RunTyping("channel.move", {{1, "2"}});  // equal values keep their order
  EXPECT_EQ(trial.Data(1, 1), 3);
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(ChannelCommandsTest, PlatesOfTheFileStayKnownWhileTheirChannelsLieTogether) {
  trial.FilePlates = {{.base = 1, .channels = 2, .loads = {}, .record = {}},
                      {.base = 3, .channels = 2, .loads = {}, .record = {}}};
  workbench.plates.FirstChannel = 1;
  RunTyping("channel.move", {{1, "9"}});
  ASSERT_EQ(trial.FilePlates.size(), 2U);
  EXPECT_EQ(trial.FilePlates[1].base, 2);
  EXPECT_EQ(workbench.plates.FirstChannel, 0);
  questions.boxAnswers = {Button::Yes};
  RunPicking("channel.erase", {3});
  EXPECT_TRUE(trial.FilePlates.empty());
  EXPECT_EQ(trial.Notices.size(), 1U);
}

TEST_F(ChannelCommandsTest, CopiesHaveTheSameBitsUnderNamesOfTheirOwn) {
  trial.Data(2, 5) = std::numeric_limits<float>::quiet_NaN();
  trial.ChanLabel[5] = "A label of twenty-eight chars";
  trial.ChanUnits[5] = "N";
  trial.ChanGain[5] = 3;
  trial.ChanOffset[5] = 4;
  RunPicking("channel.copy", {2, 5});
  ASSERT_EQ(trial.NChan, 7);
  EXPECT_TRUE(SameBits(Channel(trial, 7), Channel(trial, 5)));
  EXPECT_EQ(Channel(trial, 6), Channel(trial, 2));
  EXPECT_EQ(trial.ChanLabel[6], "L2 copy");
  EXPECT_EQ(trial.ChanLabel[7], "A label of twenty-eight chars");  // cut to 30, which leaves a blank
  EXPECT_EQ(trial.ChanUnits[7], "N");
  EXPECT_EQ(trial.ChanGain[7], 3);
  EXPECT_EQ(trial.ChanOffset[7], 4);
  SetChannels(trial, std::vector<std::vector<float>>(63, Samples{1, 2}));
  RunPicking("channel.copy", {1, 2});
  EXPECT_EQ(questions.boxes.back().title, "No Free Channels");
  EXPECT_EQ(trial.NChan, 63);
}

TEST_F(ChannelCommandsTest, EnergyOfAToneIsTheSameEverywhere) {
  const Samples tone = Sampled(200, [](int i) { return 3 * std::sin(0.4 * i + 1); });
  SetChannels(trial, {tone, Samples(200, 2.0F)});
  RunPicking("channel.teager-kaiser", {1, 2});
  const double energy = 3 * std::sin(0.4) * 3 * std::sin(0.4);
  for (std::int64_t i = 1; i <= 200; ++i) {
    ASSERT_NEAR(trial.Data(i, 1), energy, 2e-6) << i;
    ASSERT_EQ(trial.Data(i, 2), 0);
  }
  SetChannels(trial, {{1, 2}});
  RunPicking("channel.teager-kaiser", {1});
  EXPECT_EQ(LastBox(), "Too Few Data|Too few data points.");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2}));
  SetChannels(trial, {{1, 2, 1e20F, 2}});
  RunPicking("channel.teager-kaiser", {1});
  EXPECT_EQ(trial.Data(3, 1), 1e20F) << "no infinity that nobody notices";
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_TRUE(trial.FileChanged);
}

TEST_F(ChannelCommandsTest, AGraphIsLeftBeforeItsChannelsAreOthers) {
  questions.FillForm({{"channels 1", "true"}});
  Run("graph.single");
  ASSERT_NE(workbench.view, nullptr);
  questions.boxAnswers = {Button::Yes};
  RunPicking("channel.erase", {5});
  EXPECT_EQ(workbench.view, nullptr);
}

TEST_F(ChannelCommandsTest, InterpolatesBetweenTheCursors) {
  SetChannels(trial, {{0, 9, 9, 9, 8, 1}});
  SetCursors(2, 5);
  trial.Data(2, 1) = 2;
  questions.PickChannels({1});
  questions.boxAnswers = {Button::Yes};
  Run("channel.interpolate");
  EXPECT_EQ(Channel(trial, 1), (Samples{0, 2, 4, 6, 8, 1}));
}

}  // namespace
}  // namespace velmora::test
