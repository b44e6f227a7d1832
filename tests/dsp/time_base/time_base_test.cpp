#include "dsp/time_base/time_base.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using TimeBaseCommand = CommandTest;

TEST_F(TimeBaseCommand, ShiftLosesWhatLeavesAndRotationDoesNot) {
  const Samples x = {1, 2, 3, 4, 5};
  const auto moved = [&](const char* id, const char* amount) {
    SetChannels(trial, {x, x, x});
    trial.FileChanged = false;
    questions.PickChannels({1, 3});
    RunEntering(id, amount);
    EXPECT_EQ(Channel(trial, 1), Channel(trial, 3));
    EXPECT_EQ(Channel(trial, 2), x) << "the channel not picked";
    return Channel(trial, 1);
  };
  EXPECT_EQ(moved("time.phase-shift", "2"), (Samples{0, 0, 1, 2, 3}));
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(moved("time.phase-shift", "-4"), (Samples{5, 0, 0, 0, 0}));
  EXPECT_EQ(moved("time.rotate", "2"), (Samples{4, 5, 1, 2, 3}));
  EXPECT_EQ(moved("time.rotate", "-1"), (Samples{2, 3, 4, 5, 1}));

  for (const char* nothing : {"0", "", "5", "-5", "no number"}) {
    EXPECT_EQ(moved("time.phase-shift", nothing), x) << nothing;
    EXPECT_FALSE(trial.FileChanged) << nothing;
  }
  EXPECT_EQ(questions.boxes.back().text,
            "Shifting is cancelled.\nAmount of shift is greater than or equal to number of data.");
  EXPECT_EQ(workbench.report.warnings.size(), 2U);

  SetChannels(trial, {x});
  questions.PickCancel();
  Run("time.rotate");
  EXPECT_FALSE(trial.FileChanged);
}

// Against the obvious way with a copy, over every shift, on runs of channels of different widths.
TEST(TimeBase, MovesAgreeWithACopy) {
  const auto noise = NoiseChannels(9, 13);
  const ChannelList channels = {1, 3, 4, 5, 8, 9};
  for (int shift = -12; shift <= 12; ++shift) {
    Trial shifted;
    Trial rotated;
    SetChannels(shifted, noise);
    SetChannels(rotated, noise);
    ShiftSamples(shifted, channels, shift);
    RotateSamples(rotated, channels, shift);
    for (int c = 1; c <= 9; ++c) {
      Samples lost = noise[static_cast<std::size_t>(c - 1)];
      Samples kept = lost;
      if (std::find(channels.begin(), channels.end(), c) != channels.end()) {
        std::rotate(kept.begin(), kept.begin() + (13 - shift) % 13, kept.end());
        lost = kept;
        std::fill(shift > 0 ? lost.begin() : lost.end() + shift,
                  shift > 0 ? lost.begin() + shift : lost.end(), 0.0F);
      }
      EXPECT_EQ(Channel(shifted, c), lost) << "shift " << shift << " channel " << c;
      EXPECT_EQ(Channel(rotated, c), kept) << "shift " << shift << " channel " << c;
    }
  }
}

TEST_F(TimeBaseCommand, ReversalTwiceIsNothing) {
  for (const std::int64_t samples : {1, 2, 7, 8}) {
    auto noise = NoiseChannels(3, samples);
    SetChannels(trial, noise);
    const Samples times = Channel(trial, 0);
    Run("time.reverse");
    EXPECT_TRUE(workbench.time.TimeReversed);
    EXPECT_EQ(questions.boxes.back().text, "Time base reversed.  To undo, use this function again.");
    EXPECT_EQ(Channel(trial, 0), times);
    Samples backwards = noise[1];
    std::reverse(backwards.begin(), backwards.end());
    EXPECT_EQ(Channel(trial, 2), backwards);
    Run("time.reverse");
    EXPECT_FALSE(workbench.time.TimeReversed);
    EXPECT_EQ(Channel(trial, 3), noise[2]);
  }
}

TEST_F(TimeBaseCommand, ResamplingKeepsTheDuration) {
  SetChannels(trial, {{0, 4, 8, 4, 0}, {1, 1, 1, 1, 1}}, 2.0);
  RunEntering("time.normalize", "8");
  EXPECT_EQ(Channel(trial, 1), (Samples{0, 2, 4, 6, 8, 6, 4, 2, 0}));
  EXPECT_EQ(Channel(trial, 0), (Samples{0, 0.25F, 0.5F, 0.75F, 1, 1.25F, 1.5F, 1.75F, 2}));
  EXPECT_EQ(trial.Rate, 4.0);
  EXPECT_EQ(trial.Duration, 2.0);
  EXPECT_EQ(trial.CursorHi, 9) << "cursors that spanned the trial still do";
  EXPECT_TRUE(trial.FileChanged);

  // 9 samples at 4 Hz asked for at 2 Hz: 4.5 intervals, the half to the even neighbour.
  RunEntering("time.change-rate", "2");
  EXPECT_EQ(trial.NData, 5);
  EXPECT_EQ(trial.Rate, 2.0);

  for (const char* bad : {"0", "-3", "1e99", "x"}) {
    questions.inputAnswers = {bad, bad};
    Run("time.normalize");
    Run("time.change-rate");
  }
  RunEntering("time.normalize", "");
  for (const auto& [id, many] : {std::pair{"time.normalize", "100000000"},
                                 {"time.change-rate", "40000000"},
                                 {"time.shannon", "100000000"}}) {
    questions.boxAnswers = {Button::No};
    RunEntering(id, many);
    EXPECT_EQ(LastBox(),
              "Large Trial|The trial will have 100000001 samples in 2 channels, 1.2 GB.\nPress Yes to go on "
              "all the same or No to stop.");
  }
  EXPECT_EQ(Channel(trial, 1), (Samples{0, 4, 8, 4, 0}));
  EXPECT_EQ(workbench.report.warnings.size(), 8U);
}

TEST_F(TimeBaseCommand, ShannonRebuildsABandLimitedSignal) {
  Samples x;
  const auto value = [](double t) { return std::sin(2 * Pi * 3.0 * t) * std::exp(-20 * (t - 1) * (t - 1)); };
  for (int i = 0; i <= 200; ++i) {
    x.push_back(static_cast<float>(value(i / 100.0)));
  }
  SetChannels(trial, {x, Samples(201, 0.0F)}, 100.0);
  RunEntering("time.shannon", "500");
  ASSERT_EQ(trial.NData, 501);
  EXPECT_DOUBLE_EQ(trial.Rate, 250.0);
  for (std::int64_t i = 1; i <= 501; ++i) {
    const double t = static_cast<double>(i - 1) / 250.0;
    EXPECT_NEAR(trial.Data(i, 1), value(t), 1e-6) << i;
    EXPECT_NEAR(trial.Data(i, 0), t, 1e-6);
    EXPECT_EQ(trial.Data(i, 2), 0.0F);
  }
  EXPECT_EQ(questions.panels.back().status, "Channel 01 done.");

  questions.onProgress = [](ProgressPanel& panel) { panel.PressCancel(); };
  RunEntering("time.shannon", "1000");
  EXPECT_EQ(trial.NData, 501) << "Cancel leaves the trial alone";
}

TEST_F(TimeBaseCommand, EveryBaseAndTheWayBackToSeconds) {
  const Samples x = {1, 2, 3, 4, 5};
  SetChannels(trial, {x}, 10.0);
  const auto expectBase = [&](TimeBase base, const char* label, const char* units, const Samples& abscissa) {
    EXPECT_EQ(workbench.time.Base, base) << label;
    EXPECT_EQ(trial.ChanLabel[0], label);
    EXPECT_EQ(trial.ChanUnits[0], units);
    EXPECT_EQ(Channel(trial, 0), abscissa) << label;
    EXPECT_EQ(Channel(trial, 1), x);
  };
  Run("timebase.count");
  expectBase(TimeBase::Count, "Count", "n", {1, 2, 3, 4, 5});
  EXPECT_EQ(trial.Duration, 5.0);
  EXPECT_EQ(trial.Rate, 0.8);
  EXPECT_TRUE(trial.FileChanged);

  Run("timebase.percentage");
  expectBase(TimeBase::Percentage, "Percentage", "%", {0, 25, 50, 75, 100});
  EXPECT_EQ(trial.Duration, 100.0);
  EXPECT_EQ(trial.Rate, 0.04);

  questions.inputAnswers = {"2", "Angle (deg)", ""};
  Run("timebase.user-units");
  expectBase(TimeBase::UserUnits, "Angle (deg)", "units", {0, 0.5F, 1, 1.5F, 2});
  EXPECT_EQ(trial.Duration, 2.0);

  // 0.4 s at 10 records a second and 2 records a frame make 2 frames, whichever base was before.
  RunEntering("timebase.frames", "2");
  expectBase(TimeBase::Frames, "Frame", "#", {0, 0.5F, 1, 1.5F, 2});
  EXPECT_EQ(trial.Duration, 2.0);

  Run("timebase.hhmmss");
  expectBase(TimeBase::HhMmSs, "Time", "s", {0, 0.1F, 0.2F, 0.3F, 0.4F});
  Run("timebase.seconds");
  expectBase(TimeBase::Seconds, "Time", "s", {0, 0.1F, 0.2F, 0.3F, 0.4F});
  EXPECT_EQ(trial.Rate, 10.0);
  EXPECT_EQ(trial.Duration, 0.4);
}

TEST_F(TimeBaseCommand, EntriesThatMakeNoBase) {
  SetChannels(trial, {{1, 2, 3}}, 10.0);
  const Samples times = Channel(trial, 0);
  for (const char* id : {"timebase.user-units", "timebase.frames"}) {
    for (const char* bad : {"0", "-1", "length", "1e999"}) {
      RunEntering(id, bad);
      EXPECT_EQ(LastBox(), "Invalid Entry|Invalid entry.  Timebase unchanged.");
    }
    RunEntering(id, "");
  }
  EXPECT_EQ(Channel(trial, 0), times);
  EXPECT_EQ(workbench.time.Base, TimeBase::Seconds);
  EXPECT_FALSE(trial.FileChanged);

  SetChannels(trial, {{1}}, 10.0);
  for (const char* id : {"timebase.percentage", "timebase.user-units", "timebase.frames", "time.normalize",
                         "time.change-rate", "time.shannon"}) {
    Run(id);
    EXPECT_EQ(questions.boxes.back().title, "Too Few Data") << id;
  }
  EXPECT_EQ(trial.Data(1, 0), 0.0F);
}

// Re-sampling in another base changes how many samples a second there are.
TEST_F(TimeBaseCommand, SecondsAfterResamplingAPercentage) {
  SetChannels(trial, {{0, 1, 2, 3, 4}}, 10.0);
  Run("timebase.percentage");
  RunEntering("time.normalize", "8");
  EXPECT_EQ(trial.Data(9, 0), 100.0F);
  Run("timebase.seconds");
  EXPECT_EQ(trial.Rate, 20.0);
  EXPECT_FLOAT_EQ(trial.Data(9, 0), 0.4F);
}

// What row 0 counts stays what its label says; the kernels rebuild it from the rate.
TEST_F(TimeBaseCommand, ResamplingKeepsTheAbscissa) {
  for (const char* resample : {"time.normalize", "time.shannon"}) {
    const auto resampledIn = [&](const char* base, const std::vector<std::string>& entered) {
      SetChannels(trial, {{0, 1, 2, 3, 4}}, 10.0);
      workbench.time = {};
      questions.inputAnswers = {entered.begin(), entered.end()};
      Run(base);
      RunEntering(resample, "8");
      return Channel(trial, 0);
    };
    EXPECT_EQ(resampledIn("timebase.user-units", {"20", "Path", "mm"}),
              (Samples{0, 2.5F, 5, 7.5F, 10, 12.5F, 15, 17.5F, 20}));
    EXPECT_EQ(trial.Duration, 20.0);
    EXPECT_EQ(workbench.report.deeds.back().what.find("per unit"), std::string::npos)
        << "its rate is still that of the seconds";
    EXPECT_EQ(resampledIn("timebase.count", {}), (Samples{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(trial.Duration, 9.0);
    // 10 Hz, 5 samples a frame: 2 frames a second for 0.4 s.
    EXPECT_FLOAT_EQ(resampledIn("timebase.frames", {"5"}).back(), 0.8F);
    Run("timebase.seconds");
    EXPECT_FLOAT_EQ(trial.Data(9, 0), 0.4F);
  }
}

}  // namespace
}  // namespace velmora::test
