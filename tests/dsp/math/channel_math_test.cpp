#include "dsp/math/channel_math.hpp"

#include <limits>

#include "dsp/math/math_commands.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct MathCommand : CommandTest {
  Samples RunOn(const char* id, const Samples& x, double rate = 100.0) {
    SetChannels(trial, {x, x}, rate);
    RunPicking(id, {1});
    EXPECT_EQ(Channel(trial, 2), x) << "the channel not picked";
    return Channel(trial, 1);
  }
};

TEST_F(MathCommand, PointwiseOperationsOnPickedChannels) {
  const Samples x = {-4.0F, -0.25F, 0.0F, 2.25F, 9.0F};
  EXPECT_EQ(RunOn("math.absolute", x), (Samples{4, 0.25F, 0, 2.25F, 9}));
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(RunOn("math.negate", x), (Samples{4, 0.25F, 0, -2.25F, -9}));
  EXPECT_EQ(RunOn("math.half-wave", x), (Samples{0, 0, 0, 2.25F, 9}));
  EXPECT_EQ(RunOn("math.square-root", x), (Samples{0, 0, 0, 1.5F, 3}));
  EXPECT_EQ(RunOn("math.square", x), (Samples{16, 0.0625F, 0, 5.0625F, 81}));
}

TEST_F(MathCommand, InvertLeavesTheNeighbourhoodOfZeroAlone) {
  const float limit = 1e-6F;
  const Samples inverted = RunOn("math.invert", {0.0F, limit, -limit, 2e-6F, -4.0F, 0.1F});
  EXPECT_EQ(inverted, (Samples{0.0F, limit, -limit, static_cast<float>(1.0 / double{2e-6F}), -0.25F,
                               static_cast<float>(1.0 / double{0.1F})}));
}

TEST_F(MathCommand, RunningTotalsRoundWhereTheyAreStored) {
  // 2^24 + 1 is no 32-bit float: a total kept in the data loses every 1, one kept in 64 bits does not.
  const Samples x = {16777216.0F, 1.0F, 1.0F, 1.0F};
  EXPECT_EQ(RunOn("math.cumulative", x), (Samples{16777216.0F, 16777216.0F, 16777216.0F, 16777216.0F}));
  EXPECT_EQ(RunOn("math.integrate", x, 1.0), (Samples{16777216.0F, 16777216.0F, 16777218.0F, 16777220.0F}));

  const Samples integral = RunOn("math.integrate", {5, 5, 5, 5}, 50.0);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_FLOAT_EQ(integral[i], static_cast<float>(5.0 * 0.02 * static_cast<double>(i + 1)));
  }
}

TEST_F(MathCommand, DerivativesOfPolynomials) {
  // Central differences are exact for x^2, one-sided ones are off by the step.
  Samples parabola;
  for (int i = 0; i < 8; ++i) {
    parabola.push_back(static_cast<float>(i * i) / 16.0F);
  }
  const Samples first = RunOn("math.differentiate", parabola, 4.0);
  EXPECT_EQ(first, (Samples{0.25F, 0.5F, 1.0F, 1.5F, 2.0F, 2.5F, 3.0F, 3.25F}));
  const Samples second = RunOn("math.second-derivative", parabola, 4.0);
  EXPECT_EQ(second, (Samples{1.0F, 1.5F, 2.0F, 2.0F, 2.0F, 2.0F, 1.5F, 1.0F}));

  EXPECT_EQ(RunOn("math.differentiate", {1, 3, 9}, 2.0), (Samples{4, 8, 12}));
  // To the bit: 64 bits, divided by one step or by two, rounded where it is stored.
  const Samples x = NoiseChannels(1, 3000, 11)[0];
  const Samples slopes = RunOn("math.differentiate", x, 960.0);
  const double step = 1.0 / 960.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const std::size_t left = i == 0 ? 0 : i - 1;
    const std::size_t right = i + 1 == x.size() ? i : i + 1;
    const double rise = double{x[right]} - double{x[left]};
    ASSERT_EQ(slopes[i], static_cast<float>(rise / (right - left == 2 ? step + step : step))) << i;
  }
  SetChannels(trial, {{1, 2}});
  Run("math.differentiate");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2}));
  EXPECT_EQ(workbench.report.warnings.size(), 1U);
}

TEST_F(MathCommand, ConstantsAndTheBookkeepingOfChanges) {
  const Samples x = {1.0F, -2.0F, 0.5F};
  const auto runValues = [&](const char* id, const std::string& first) {
    SetChannels(trial, {x, x});
    trial.FileChanged = false;
    RunTyping(id, {{1, first}});
    EXPECT_EQ(Channel(trial, 2), x);
    return Channel(trial, 1);
  };
  EXPECT_EQ(runValues("math.add", "0.25"), (Samples{1.25F, -1.75F, 0.75F}));
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(runValues("math.add", "0"), x);
  EXPECT_FALSE(trial.FileChanged);

  EXPECT_EQ(runValues("math.multiply", "-4"), (Samples{-4, 8, -2}));
  EXPECT_FALSE(trial.FileChanged) << "multiplying does not mark the file";
  EXPECT_EQ(trial.ChanGain[1], 1.0);
  EXPECT_EQ(runValues("math.multiply", "0"), x);
  EXPECT_EQ(runValues("math.normalize", "-4"), (Samples{-0.25F, 0.5F, -0.125F}));
  EXPECT_EQ(runValues("math.normalize", "no number"), x);
  EXPECT_EQ(runValues("math.power", "3"), (Samples{1, -8, 0.125F}));
  EXPECT_FALSE(trial.FileChanged);

  EXPECT_EQ(runValues("math.power", "-2"), x);
  EXPECT_EQ(LastBox(), "Invalid power|Negative powers are not permitted.  Array 1 will not be altered.");

  SetChannels(trial, {x});
  questions.PickCancel();
  Run("math.add");
  EXPECT_EQ(Channel(trial, 1), x);
}

TEST_F(MathCommand, ScalingKeepsGainAndMemory) {
  SetChannels(trial, {{1, 2}, {3, 4}, {5, 6}});
  trial.ChanGain[2] = 10.0;
  RunTyping("analysis.scaling", {{2, "0.5"}, {3, "0"}});
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1.5F, 2.0F}));
  EXPECT_EQ(Channel(trial, 3), (Samples{5, 6}));
  EXPECT_EQ(trial.ChanGain[2], 5.0);
  EXPECT_TRUE(trial.FileChanged);

  // The next use offers what was entered; a channel left at 0 shows 1.
  EXPECT_EQ(OfferedBy("analysis.scaling"), (Texts{"1.00000", "0.50000", "1.00000"}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1.5F, 2.0F}));
}

TEST_F(MathCommand, PathLengthBetweenTheCursors) {
  SetChannels(trial, {{0, 3, 3, 3}, {0, 4, 4, 16}, {0, 0, 12, 12}});
  RunPicking("math.path-length", {1, 2, 3});
  EXPECT_EQ(
      LastBox(),
      "Path Length|Path starts from datum 1 to datum 4.\nPath length of channels 00, 01 and 02 is 29.0000.");
  SetCursors(2, 3);
  RunPicking("math.path-length", {2, 3});
  EXPECT_EQ(questions.boxes.back().text,
            "Path starts from datum 2 to datum 3.\nPath length of channels 01 and 02 is 12.0000.");
  RunPicking("math.path-length", {1});
  EXPECT_EQ(questions.boxes.back().text,
            "Path starts from datum 2 to datum 3.\nPath length of channel 00 is 0.0000.");

  SetChannels(trial, {{1}, {1}, {1}, {1}});
  RunPicking("math.path-length", {1, 2, 3, 4});
  EXPECT_EQ(questions.boxes.back().title, "Too Many Channels Selected");
}

TEST_F(MathCommand, ResidualsLeaveTheChangedMarkAlone) {
  SetChannels(trial, {{1, 2, 3, 4}, {1, 2, 3, 8}});
  trial.ChanLabel[1] = "Left";
  trial.ChanLabel[2] = " Right ";
  Run("math.rms-residuals");
  EXPECT_TRUE(questions.pickPrompts.empty());
  EXPECT_EQ(LastBox(), "|RMS of residuals for 'Left' and 'Right' is 2.000.");

  SetChannels(trial, {{1, 2}, {0, 0}, {3, 2}});
  RunPicking("math.rms-residuals", {3, 1});
  EXPECT_EQ(questions.boxes.back().text, "RMS of residuals for '' and '' is 1.414.");
  EXPECT_FALSE(trial.FileChanged);
  RunPicking("math.rms-residuals", {1, 2, 3});
  EXPECT_EQ(questions.boxes.back().title, "Choose Only 2 Channels");
  EXPECT_FALSE(trial.FileChanged);
  SetChannels(trial, {{1, 2}});
  Run("math.rms-residuals");
  EXPECT_EQ(questions.boxes.back().title, "Only One Channel Loaded");
}

TEST_F(MathCommand, FaultsKeepWhatWasWrittenBeforeThem) {
  const float big = std::numeric_limits<float>::max();
  SetChannels(trial, {{1, 2, 3}, {1, big, 3}, {1, 2, 3}});
  RunPicking("math.square", {1, 2, 3});
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 4, 9}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1, big, 3}));
  EXPECT_EQ(Channel(trial, 3), (Samples{1, 2, 3}));

  SetChannels(trial, {{4, -4, 4}});
  RunTyping("math.power", {{1, "0.5"}});
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  EXPECT_EQ(Channel(trial, 1), (Samples{2, -4, 4}));

  // Infinities and NaN in the data are data.
  const float infinity = std::numeric_limits<float>::infinity();
  SetChannels(trial, {{infinity, 1, std::nanf("")}});
  RunTyping("math.multiply", {{1, "2"}});
  EXPECT_EQ(trial.Data(1, 1), infinity);
  EXPECT_EQ(trial.Data(2, 1), 2.0F);
  EXPECT_TRUE(std::isnan(trial.Data(3, 1)));
  RunPicking("math.integrate", {1});
  EXPECT_EQ(trial.Data(2, 1), infinity);
}

// A NaN anywhere does not disturb the rest, and an infinity sends a command down its channel by
// channel road: both roads must agree to the bit.
TEST_F(MathCommand, BothRoadsGiveTheSameBits) {
  for (const char* id : {"math.square", "math.cumulative", "math.integrate", "math.differentiate"}) {
    auto noise = NoiseChannels(5, 200);
    SetChannels(trial, noise, 1000.0);
    RunPicking(id, {1, 2, 4, 5});
    std::vector<Samples> together;
    for (int c = 1; c <= 5; ++c) {
      together.push_back(Channel(trial, c));
    }
    noise[4][199] = std::numeric_limits<float>::infinity();
    SetChannels(trial, noise, 1000.0);
    RunPicking(id, {1, 2, 4, 5});
    for (int c = 1; c <= 4; ++c) {
      EXPECT_EQ(Channel(trial, c), together[static_cast<std::size_t>(c - 1)]) << id << " channel " << c;
    }
  }
}

TEST_F(MathCommand, NoTrialNoRateNoIndex) {
  for (const char* id : {"math.absolute", "analysis.scaling", "analysis.high-pass", "analysis.low-pass",
                         "smooth.butterworth"}) {
    Run(id);
  }
  EXPECT_TRUE(questions.pickPrompts.empty() && questions.formNames.empty());
  SetChannels(trial, {{1, 2, 3}});
  trial.Rate = 0.0;
  Run("math.integrate");
  EXPECT_EQ(questions.boxes.back().title, "Invalid Sampling Rate");
  MathFunction(workbench, 16);
  EXPECT_EQ(questions.boxes.back().text, "Invalid case.  Program error in Math. functions.");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2, 3}));
}

}  // namespace
}  // namespace velmora::test
