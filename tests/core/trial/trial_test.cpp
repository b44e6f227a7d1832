#include "core/trial/trial.hpp"

#include <limits>
#include <new>

#include "support/scripted_questions.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

TEST(Trial, EveryAccessOutsideIsRefused) {
  Trial trial;
  EXPECT_THROW(trial.Data(1, 0), std::out_of_range);
  SetChannels(trial, {{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(trial.Data(3, 2), 6.0F);
  EXPECT_EQ(trial.Data(3, 0), 0.02F);
  for (const auto& [i, c] : std::vector<std::pair<int, int>>{{0, 1}, {4, 1}, {1, -1}, {1, 3}}) {
    EXPECT_THROW(trial.Data(i, c), std::out_of_range) << i << ", " << c;
  }
  EXPECT_THROW(trial.Channel(3), std::out_of_range);
  trial.DiscardData();
  EXPECT_THROW(trial.Data(1, 1), std::out_of_range);
  EXPECT_THROW(trial.AllocateData(64, std::numeric_limits<std::int32_t>::max()), std::bad_alloc);
  EXPECT_EQ(trial.NData, 0);
}

TEST(Trial, ErasingAndAddingMoveAllThatBelongsToAChannel) {
  Trial trial;
  SetChannels(trial, {{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  for (std::size_t c = 1; c <= 4; ++c) {
    trial.ChanLabel[c] = "label " + std::to_string(c);
    trial.ChanUnits[c] = "u" + std::to_string(c);
    trial.ChanGain[c] = 10.0 * static_cast<double>(c);
  }
  ChannelFlags erase{};
  erase[1] = erase[3] = true;
  trial.EraseChannels(erase);
  ASSERT_EQ(trial.NChan, 2);
  EXPECT_EQ(Channel(trial, 0), (Samples{0.0F, 0.01F}));
  EXPECT_EQ(Channel(trial, 1), (Samples{2, 2}));
  EXPECT_EQ(Channel(trial, 2), (Samples{4, 4}));
  EXPECT_EQ(trial.ChanLabel[2], "label 4");
  EXPECT_EQ(trial.ChanUnits[1], "u2");
  EXPECT_EQ(trial.ChanGain[2], 40.0);

  trial.AddChannels(62);
  ASSERT_EQ(trial.NChan, 64);
  EXPECT_EQ(Channel(trial, 2), (Samples{4, 4}));
  EXPECT_EQ(Channel(trial, 64), (Samples{0, 0}));
  EXPECT_EQ(trial.ChanColour[64], 4);
  EXPECT_THROW(trial.AddChannels(1), std::length_error);
  erase.fill(true);
  trial.EraseChannels(erase);
  EXPECT_EQ(trial.NChan, 0);
  EXPECT_EQ(trial.NData, 2);
}

TEST(Trial, UsedMemoryIsZeroAgain) {
  Trial trial;
  SetChannels(trial, {Samples(1000, 7.0F), Samples(1000, 7.0F)});
  trial.AllocateData(3, 700);
  for (int c = 0; c <= 3; ++c) {
    EXPECT_EQ(Channel(trial, c), Samples(700, 0.0F));
  }
  trial.ResizeData(1'000'000);  // into huge pages
  trial.Data(1'000'000, 3) = 1.0F;
  EXPECT_EQ(trial.Data(999'999, 3), 0.0F);
  trial.ResizeData(2);
  EXPECT_EQ(trial.NData, 2);
}

TEST(Helpers, SamplesAndTimes) {
  Trial trial;
  trial.Rate = 200.0;
  EXPECT_EQ(SampleToTime(trial, 1), 0.0);
  EXPECT_EQ(SampleToTime(trial, 51), 0.25);
  EXPECT_EQ(TimeToSample(trial, 0.25), 51);
  EXPECT_EQ(TimeToSample(trial, 0.5 / 200), 2) << "1.5 goes to the even 2";
  EXPECT_EQ(TimeToSample(trial, 1.5 / 200), 2) << "2.5 goes to the even 2";
  EXPECT_EQ(TimeToSample(trial, 1e300), std::numeric_limits<std::int32_t>::max());
  for (const double rate : {0.0, -1.0, std::nan("")}) {
    trial.Rate = rate;
    EXPECT_EQ(SampleToTime(trial, 9), 0.0);
    EXPECT_EQ(TimeToSample(trial, 9.0), 0);
  }
}

TEST(Helpers, CursorRangeIsAskedOnlyWhenItMatters) {
  ScriptedQuestions questions;
  Workbench workbench{questions};
  SetChannels(workbench.trial, {Samples(100, 0.0F)});
  const auto asked = [&workbench] {
    const SampleRange range = AskCursorRange(workbench);
    return std::pair(range.lo, range.hi);
  };
  EXPECT_EQ(asked(), std::pair(1, 100));
  workbench.trial.CursorLo = 0;  // neither cursor is set
  workbench.trial.CursorHi = 0;
  EXPECT_EQ(asked(), std::pair(1, 100));
  EXPECT_TRUE(questions.boxes.empty());

  workbench.trial.CursorLo = 10;
  workbench.trial.CursorHi = 20;
  questions.boxAnswers = {Button::Yes, Button::No};
  EXPECT_EQ(asked(), std::pair(10, 20));
  EXPECT_EQ(asked(), std::pair(1, 100));
  EXPECT_EQ(questions.boxes[0].title, "Data between Cursors?");
  EXPECT_EQ(questions.boxes[0].text,
            "Press Yes to save/use data between the cursors ( 10 to 20 )\nor No to save/use ALL the data.");
  EXPECT_EQ(questions.boxes[0].icon, Icon::Question);
}

TEST(Helpers, CursorsAfterALoad) {
  Trial trial;
  const auto normalised = [&trial](std::int32_t samples, std::int32_t lo, std::int32_t hi) {
    trial.NData = samples;
    trial.CursorLo = lo;
    trial.CursorHi = hi;
    NormaliseCursors(trial);
    return std::pair(trial.CursorLo, trial.CursorHi);
  };
  EXPECT_EQ(normalised(100, 0, 0), std::pair(1, 100));
  EXPECT_EQ(normalised(100, 30, 400), std::pair(30, 100));
  EXPECT_EQ(normalised(100, 300, 20), std::pair(99, 100));
  EXPECT_EQ(normalised(100, 30, 30), std::pair(30, 100));
  EXPECT_EQ(normalised(1, 0, 0), std::pair(0, 1));
}

}  // namespace
}  // namespace velmora::test
