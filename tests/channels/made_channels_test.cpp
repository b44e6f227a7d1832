#include <limits>

#include "channels/waveform.hpp"
#include "core/text/numbers.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct CombineTest : CommandTest {
  void SetUp() override {
    SetChannels(trial, {{3, -1, 0}, {4, 2, 5}, {12, 3, 1e-7F}});
    trial.ChanUnits[1] = "N";
  }
  Samples Combined(const std::string& operation, const std::vector<int>& channels, Edits more = {}) {
    more.emplace_back("optOperation", operation);
    for (const int c : channels) {
      more.emplace_back("channels " + std::to_string(c), "yes");
    }
    AnswerForm(more, "Compute");
    Run("channel.combine");
    return Channel(trial, trial.NChan);
  }
};

TEST_F(CombineTest, OperationsByHand) {
  EXPECT_EQ(Combined("Sum", {1, 2, 3}), (Samples{19, 4, 5.0000001F}));
  EXPECT_EQ(trial.ChanLabel[4], "Sum");
  EXPECT_EQ(trial.ChanUnits[4], "N");
  EXPECT_EQ(workbench.report.deeds.back().what, "Sum, as a new channel");
  EXPECT_EQ(Combined("1", {1, 2, 3}), (Samples{-13, -6, -5.0000001F}));
  EXPECT_EQ(Combined("Product", {1, 2}), (Samples{12, -2, 0}));
  EXPECT_EQ(Combined("Mean", {1, 2}), (Samples{3.5F, 0.5F, 2.5F}));
  EXPECT_EQ(Combined("Resultant", {1, 2, 3}), (Samples{13, std::sqrt(14.0F), 5}));
  EXPECT_EQ(Combined("Minimum", {1, 2}), (Samples{3, -1, 0}));
  EXPECT_EQ(Combined("Maximum", {1, 2}), (Samples{4, 2, 5}));
  EXPECT_EQ(Combined("Weighted sum", {1, 2}, {{"Weights 1", "2"}, {"Weights 2", "-1"}}),
            (Samples{2, -4, -5}));
  const Samples angle = Combined("9", {1, 2});
  EXPECT_FLOAT_EQ(angle[0], 53.130102F);
  EXPECT_FLOAT_EQ(angle[1], 116.56505F);
  EXPECT_EQ(angle[2], 90);
  EXPECT_EQ(trial.ChanUnits[trial.NChan], "deg");
  EXPECT_EQ(trial.Notices, Texts{});
  EXPECT_EQ(Combined("3", {1, 3}, {{"txtLabel", "Part"}, {"txtUnits", ""}}), (Samples{0.25F, -1.0F / 3, 0}));
  EXPECT_EQ(trial.ChanLabel[trial.NChan], "Part");
  EXPECT_EQ(trial.Notices, Texts{"1 sample of the ratio was set to 0 since the divisor was 0."});
}

TEST_F(CombineTest, ReplacesTheFirstAndRefusesTooFew) {
  trial.Data(2, 2) = std::numeric_limits<float>::quiet_NaN();
  Combined("Maximum", {1, 2}, {{"optTarget", "1"}});
  EXPECT_EQ(trial.NChan, 3);
  EXPECT_EQ(trial.Data(1, 1), 4);
  EXPECT_TRUE(std::isnan(trial.Data(2, 1)));  // not passed over
  EXPECT_EQ(trial.ChanLabel[1], "Maximum");
  workbench.report = {};
  AnswerForm({{"channels 1", "yes"}}, "Compute");
  AnswerForm({{"optOperation", "3"}, {"channels 2", "yes"}, {"channels 3", "yes"}}, "Compute");
  AnswerForm({}, "Cancel");
  Run("channel.combine");
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Too Few Channels Selected: You must choose at least 2 channels.",
                   "Choose Only 2 Channels: You must only choose two channels."}));
  EXPECT_TRUE(workbench.report.deeds.empty());
  trial.Data(2, 3) = 3e38F;
  AnswerForm({{"optOperation", "0"}, {"channels 1", "yes"}, {"channels 3", "yes"}}, "Compute");
  trial.Data(2, 1) = 3e38F;
  Run("channel.combine");
  EXPECT_EQ(LastBox(), "Combine channels|The result for sample 2 is not a number that data can hold.");
  EXPECT_EQ(trial.NChan, 3);
}

std::vector<double> Made(const Waveform& wave, std::size_t samples, double rate) {
  std::vector<double> sum(samples);
  AddWaveform(wave, rate, sum);
  return sum;
}

TEST(WaveformTest, ShapesByHand) {
  using Values = std::vector<double>;
  EXPECT_EQ(Made({.shape = WaveShape::Constant, .amplitude = 2, .offset = 1}, 2, 1), (Values{3, 3}));
  EXPECT_EQ(Made({.shape = WaveShape::Square, .duty = 25}, 5, 4), (Values{1, -1, -1, -1, 1}));
  EXPECT_EQ(Made({.shape = WaveShape::Triangle, .amplitude = 2}, 5, 4), (Values{-2, 0, 2, 0, -2}));
  EXPECT_EQ(Made({.shape = WaveShape::Sawtooth, .phase = 90}, 4, 4), (Values{-0.5, 0, 0.5, -1}));
  EXPECT_EQ(Made({.shape = WaveShape::Pulse, .start = 1, .width = 2}, 5, 1), (Values{0, 1, 1, 0, 0}));
  EXPECT_EQ(Made({.shape = WaveShape::Ramp, .amplitude = 4, .start = 1, .width = 2}, 5, 1),
            (Values{0, 0, 2, 4, 4}));
  const auto half = Made({.shape = WaveShape::HalfSine, .width = 2}, 4, 2);
  EXPECT_DOUBLE_EQ(half[1], std::sqrt(0.5));
  EXPECT_DOUBLE_EQ(half[2], 1);
  EXPECT_DOUBLE_EQ(Made({.shape = WaveShape::Haversine, .width = 2}, 4, 2)[1], 0.5);
  const auto sine = Made({.phase = 90}, 5, 4);
  EXPECT_DOUBLE_EQ(sine[0], 1);
  EXPECT_NEAR(sine[1], 0, 1e-15);
  // From 0 to 2 Hz in 2 s: the phase is t^2 / 2 periods.
  const auto chirp = Made({.shape = WaveShape::Chirp, .frequency = 0, .endFrequency = 2}, 9, 4);
  EXPECT_DOUBLE_EQ(chirp[2], std::sin(2 * Pi * 0.125));
  EXPECT_NEAR(chirp[8], 0, 1e-15);
}

// The first numbers of numpy.random.RandomState(1): random_sample() and standard_normal().
TEST(WaveformTest, NoiseCanBeMadeAgain) {
  const auto uniform = Made({.shape = WaveShape::UniformNoise}, 2, 1);
  EXPECT_DOUBLE_EQ(uniform[0], 2 * 0.417022004702574 - 1);
  EXPECT_DOUBLE_EQ(uniform[1], 2 * 0.7203244934421581 - 1);
  const auto gauss = Made({.shape = WaveShape::GaussianNoise, .amplitude = 1}, 2, 1);
  EXPECT_DOUBLE_EQ(gauss[0], 1.6243453636632417);
  EXPECT_DOUBLE_EQ(gauss[1], -0.6117564136500754);
}

struct GenerateTest : CommandTest {};

TEST_F(GenerateTest, ASumBecomesAChannelOfTheTrial) {
  SetChannels(trial, {{1, 2, 3, 4, 5}}, 4);
  questions.FillForm({{"txtAmplitude", "2"}}, "Add");
  questions.FillForm({{"optShape", "Constant"}, {"txtAmplitude", "1"}}, "Add");
  questions.FillForm({{"txtUnits", "mV"}}, "Done");
  Run("channel.generate");
  ASSERT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.ChanLabel[2], "Constant");
  EXPECT_EQ(trial.ChanUnits[2], "mV");
  EXPECT_FLOAT_EQ(trial.Data(2, 2), 3);
  EXPECT_FLOAT_EQ(trial.Data(4, 2), -1);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(workbench.report.deeds.back().what, "Generated Sine + Constant");
}

TEST_F(GenerateTest, WithoutATrialItBeginsOneAndCancelLeavesNone) {
  questions.FillForm({{"txtRate", "100"}, {"txtDuration", "2"}}, "Add");
  questions.FillForm({}, "Cancel");
  Run("channel.generate");
  EXPECT_EQ(trial.NData, 0);
  EXPECT_TRUE(workbench.report.deeds.empty());
  questions.FillForm({{"txtRate", "0"}}, "Add");
  questions.FillForm({{"txtRate", "100"}, {"txtDuration", "2"}, {"txtFrequency", "51"}}, "Add");
  questions.FillForm({{"txtFrequency", "5"}, {"txtWidth", "-1"}}, "Add");
  questions.FillForm({}, "Done");
  Run("channel.generate");
  EXPECT_EQ(
      workbench.report.warnings,
      (Texts{"Generate a Waveform: Sampling rate and time must be above zero, with fewer than 2147483647 "
             "samples.",
             "Invalid Entry: Frequency (Hz) must be from 0 to 50."}));
  EXPECT_EQ(trial.NData, 201);
  EXPECT_EQ(trial.NChan, 1);
  EXPECT_EQ(trial.Duration, 2);
  EXPECT_EQ(trial.ChanLabel[1], "Sine");
  workbench.report = {};
  questions.FillForm({}, "Done");
  questions.FillForm({{"optShape", "Pulse"}, {"txtWidth", "0"}}, "Add");
  questions.FillForm({{"optShape", "Square"}, {"txtDuty", "100"}}, "Add");
  questions.FillForm({}, "Cancel");
  Run("channel.generate");
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Generate a Waveform: No waveform was added.  Press Add first, or Cancel.",
                   "Invalid Entry: Width (s) must be from 0 to 1e+30.",
                   "Invalid Entry: Duty (%) must be from 0 to 100."}));
  trial.Rate = 0;
  Run("channel.generate");
  EXPECT_EQ(LastBox(), "Invalid Sampling Rate or Timebase|Data not time based.  Processing cannot continue.");
}

}  // namespace
}  // namespace velmora::test
