#include <cmath>

#include "dsp/filters/butterworth_form.hpp"
#include "dsp/filters/recursive_filter.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct FilterCommand : CommandTest {
  std::vector<Samples> noise = NoiseChannels(3, 400);

  void SetUp() override { SetChannels(trial, noise, 1000.0); }

  static double Shown(const Form& form, const char* field, std::size_t channel) {
    return (*std::get<ChannelNumbers*>(form.FindField(field)->target))[channel];
  }
  // Channel c as one routine makes it of the original noise.
  Samples Expected(int c, FilterVerdict (*routine)(Trial&, int, SampleRange, const FilterSettings&),
                   const FilterSettings& settings) {
    Trial alone;
    SetChannels(alone, noise, trial.Rate);
    routine(alone, c, {1, alone.NData}, settings);
    return Channel(alone, c);
  }
};

TEST_F(FilterCommand, DirectFiltersRememberTheirCutoffs) {
  RunTyping("analysis.low-pass", {{1, "6"}, {3, "12.5"}});
  EXPECT_EQ(Channel(trial, 1), Expected(1, LowPassChannel, {.Cutoff = 6, .Padding = -10, .IsZeroLag = true}));
  EXPECT_EQ(Channel(trial, 2), noise[1]);
  EXPECT_EQ(Channel(trial, 3),
            Expected(3, LowPassChannel, {.Cutoff = 12.5F, .Padding = -10, .IsZeroLag = true}));
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(workbench.filters.FilterCutoffs[3], 12.5F);

  // Each of the two offers its own last values; those of a cancelled picker are not kept.
  std::vector<std::string> offered;
  const auto look = [&offered](ChannelPicker& picker) {
    offered.push_back(picker.ValueText(1));
    picker.SetValue(1, "99");
    return std::string("Cancel");
  };
  SetUp();
  trial.FileChanged = false;
  for (int times = 0; times < 2; ++times) {
    questions.pickAnswers.emplace_back(look);
    Run("analysis.low-pass");
  }
  questions.pickAnswers.emplace_back(look);
  Run("analysis.high-pass");
  EXPECT_EQ(offered, (std::vector<std::string>{"6.00000", "6.00000", "0.00000"}));
  EXPECT_EQ(Channel(trial, 1), noise[0]);
  EXPECT_FALSE(trial.FileChanged);
  RunTyping("analysis.high-pass", {});
  EXPECT_FALSE(trial.FileChanged);

  RunTyping("analysis.high-pass", {{2, "20"}});
  EXPECT_EQ(Channel(trial, 2),
            Expected(2, HighPassChannel, {.Cutoff = 20, .Padding = -10, .IsZeroLag = true}));
}

TEST_F(FilterCommand, RefusalsNameTheChannelAndTheOthersGoOn) {
  trial.Rate = 100.0;
  RunTyping("analysis.low-pass", {{1, "45"}, {2, "6"}, {3, "48"}});
  ASSERT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(questions.boxes[0].title, "Invalid Cutoff Frequency");
  EXPECT_EQ(questions.boxes[0].icon, Icon::Exclamation);
  EXPECT_EQ(questions.boxes[0].text,
            "Adjusted cutoff frequency 56.09 Hz is too high (> sampling rate/2).\nMaximum is 40.11 Hz.\n\n"
            "Filtering is cancelled for channel 1.");
  EXPECT_EQ(workbench.report.warnings.size(), 2U);
  EXPECT_EQ(Channel(trial, 1), noise[0]);
  EXPECT_NE(Channel(trial, 2), noise[1]);
  EXPECT_TRUE(trial.FileChanged);

  RunTyping("analysis.high-pass", {{1, "63"}});
  EXPECT_EQ(questions.boxes.back().text,
            "Cutoff frequency -0.01 Hz is too high.\nMaximum is 62.33 Hz.\n\n"
            "Filtering is cancelled for channel 1.");
  trial.Rate = 0.5;
  RunTyping("analysis.high-pass", {{1, "0.1"}});
  EXPECT_EQ(questions.boxes.back().text,
            "Adjusted cutoff frequency 0.34 Hz is too high.\nMaximum is 0.31 Hz.\n\n"
            "Filtering is cancelled for channel 1.");

  trial.Rate = 20000.0;
  RunTyping("analysis.high-pass", {{1, "1.25"}});
  EXPECT_EQ(LastBox(),
            "Low Cutoff Frequency|Cutoff frequency 1.2500 Hz is so low that it may have no effect.\nMinimum "
            "is 1.3701 Hz.");
  EXPECT_NE(Channel(trial, 1), noise[0]);
}

TEST_F(FilterCommand, FormFiltersEachChannelAsItsRowSays) {
  AnswerForm({{"FilterCutoffs 1", "8"},
              {"FilterCutoffs 2", "-3"},
              {"FilterCutoffs 3", "15"},
              {"Passes 3", "2"},
              {"ZeroLag 3", "no"}});
  Run("smooth.butterworth");
  // Butterworth, reflective padding of a fifth of the samples.
  EXPECT_EQ(Channel(trial, 1), Expected(1, LowPassChannel, {.Cutoff = 8, .Padding = 80, .IsZeroLag = true}));
  EXPECT_EQ(Channel(trial, 2), noise[1]);
  EXPECT_EQ(Channel(trial, 3), Expected(3, LowPassChannel, {.Cutoff = 15, .Passes = 2, .Padding = 80}));
  EXPECT_TRUE(trial.FileChanged);

  // The cut-offs stay for the next use, passes and zero lag do not.
  SetUp();
  AnswerForm({{"optPassType", "High-pass"},
              {"optFilter", "Bessel"},
              {"optPad", "Pad with Means"},
              {"cwnPadding", "-30"},
              {"chkRectify", "yes"}});
  Run("smooth.butterworth");
  EXPECT_EQ(Channel(trial, 3),
            Expected(3, HighPassBesselChannel, {.Cutoff = 15, .Padding = -30, .IsZeroLag = true}));

  SetUp();
  AnswerForm({{"optFilter", "1"}, {"optPad", "0"}, {"cwnPadding", "-30"}, {"chkRectify", "1"}});
  Run("smooth.butterworth");
  EXPECT_EQ(Channel(trial, 1), Expected(1, LowPassChannel,
                                        {.Cutoff = 8,
                                         .Padding = 30,
                                         .IsZeroLag = true,
                                         .IsCritical = true,
                                         .PadZeros = true,
                                         .Rectify = true}));
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(FilterCommand, FormColumnsAndButtons) {
  workbench.filters.FilterCutoffs[2] = 7.5F;
  ButterworthForm form(workbench);
  const auto press = [&form](const char* caption) { return form.FindButton(caption)->press(); };
  Type(form, {{"Passes 1", "3"}, {"ZeroLag 2", "no"}});
  EXPECT_EQ(Shown(form, "Order", 1), 12);
  EXPECT_EQ(Shown(form, "Order", 2), 2);
  EXPECT_THROW(Type(form, {{"Order 1", "2"}}), std::invalid_argument);

  // All copies what was entered last, cut-off or passes, and the last zero lag.
  EXPECT_FALSE(press("All"));
  EXPECT_EQ(Shown(form, "Passes", 3), 3);
  EXPECT_EQ(Shown(form, "Order", 3), 6);
  EXPECT_EQ(Shown(form, "FilterCutoffs", 2), 7.5);
  Type(form, {{"FilterCutoffs 2", "7.5"}, {"Passes 2", "5"}, {"FilterCutoffs 1", "9"}});
  EXPECT_FALSE(press("All"));
  EXPECT_EQ(Shown(form, "FilterCutoffs", 2), 9);
  EXPECT_EQ(Shown(form, "Passes", 3), 3);
  EXPECT_EQ(workbench.filters.FilterCutoffs[3], 9.0F);
  EXPECT_EQ(workbench.filters.FilterCutoffs[4], 0.0F) << "beyond the trial's channels";

  // Clicks ask; an empty reply changes nothing, text that is no number counts as 0.
  questions.inputAnswers = {"2.6", "", "none"};
  form.ClickPasses(2);
  form.ClickCutoff(1);
  form.ClickCutoff(3);
  EXPECT_EQ(Shown(form, "Passes", 2), 3);
  EXPECT_EQ(Shown(form, "FilterCutoffs", 1), 9);
  EXPECT_EQ(Shown(form, "FilterCutoffs", 3), 0);
  EXPECT_EQ(questions.inputs[1].defaultText, "9");
  EXPECT_FALSE(press("Reset"));
  EXPECT_EQ(Shown(form, "FilterCutoffs", 1), 0);
  EXPECT_EQ(Shown(form, "Order", 1), 4);
  EXPECT_TRUE(workbench.filters.ZeroLag[2]);
  Type(form, {{"FilterCutoffs 1", "9"}});
  EXPECT_TRUE(press("Cancel"));
  EXPECT_TRUE(workbench.chooser.ChooserCancelled);
  EXPECT_EQ(workbench.filters.FilterCutoffs[1], 0.0F);
  EXPECT_EQ(Channel(trial, 1), noise[0]);
  EXPECT_FALSE(trial.FileChanged);
}

}  // namespace
}  // namespace velmora::test
