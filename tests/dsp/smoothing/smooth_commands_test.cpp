#include "core/text/numbers.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using SmoothCommand = CommandTest;

TEST_F(SmoothCommand, WindowsRunOnThePickedChannels) {
  const Samples x = {3, 0, 6, 9, -3, 12};
  SetChannels(trial, {x, x}, 10.0);
  AnswerForm({{"channels 2", "true"}});
  Run("smooth.moving-average");
  EXPECT_EQ(questions.formNames.back(), "frmSetEpochDuration");
  EXPECT_EQ(Channel(trial, 1), x);
  EXPECT_EQ(Channel(trial, 2), (Samples{3, 3, 5, 4, -3, 12})) << "the width starts at 3";
  EXPECT_TRUE(trial.FileChanged);

  // A width in seconds, whichever of the two fields comes first; it is the next command's too.
  SetChannels(trial, {x, x}, 10.0);
  AnswerForm({{"WindowWidth", "0.4"}, {"WindowInSeconds", "1"}, {"channels 1", "1"}, {"channels 2", "1"}});
  Run("smooth.moving-average");
  EXPECT_EQ(Channel(trial, 2), (Samples{3, 0, 4.5F, 3, -3, 12}));
  EXPECT_EQ(workbench.smoothing.WindowWidth, 4);
  SetChannels(trial, {x}, 10.0);
  AnswerForm({{"WindowInSeconds", "false"}});
  Run("smooth.mav");
  // (3+0+6+9)/4 goes to the first three, (4.5+4.5+9+3)/4 to the last four.
  EXPECT_EQ(Channel(trial, 1), (Samples{4.5F, 4.5F, 5.25F, 5.25F, 5.25F, 5.25F})) << "one channel is picked";
}

// A window is drawn anew in these turns; how often depends on the work alone.
TEST_F(SmoothCommand, LongWorkGivesTurns) {
  int turns = 0;
  questions.onProgress = [&turns](ProgressPanel& panel) {
    EXPECT_EQ(panel.Title(), "Processing. ... Please wait.");
    ++turns;
  };
  workbench.smoothing.WindowWidth = 201;
  for (const char* command :
       {"smooth.moving-average", "smooth.rms", "smooth.mav", "smooth.median", "analysis.low-pass"}) {
    SetChannels(trial, {Samples(100'000, 1.0F), Samples(100'000, 2.0F)}, 1000.0);
    turns = 0;
    if (std::string_view(command).starts_with("smooth")) {
      AnswerForm({{"channels 1", "true"}, {"channels 2", "true"}});
    } else {
      questions.PickValues({{1, "6"}});
    }
    Run(command);
    EXPECT_GE(turns, 5) << command;
    EXPECT_EQ(Channel(trial, 2), Samples(100'000, 2.0F)) << command;
  }
}

TEST_F(SmoothCommand, WidthsOutsideTheTrialAreRefused) {
  SetChannels(trial, {{3}}, 10.0);
  Run("smooth.median");
  EXPECT_EQ(questions.boxes.back().title, "Too Few Data");
  workbench.report = {};
  const Samples x = {3, 0, 6, 9, -3, 12};
  SetChannels(trial, {x}, 10.0);
  for (const char* width : {"6", "0", "-1", "1e99", "nothing"}) {
    AnswerForm({{"WindowWidth", width}});
  }
  AnswerForm({{"WindowWidth", "0.6"}, {"WindowInSeconds", "yes"}});
  AnswerForm({}, "Cancel");
  Run("smooth.median");
  EXPECT_EQ(Channel(trial, 1), x);
  EXPECT_EQ(workbench.smoothing.WindowWidth, 3);
  EXPECT_EQ(workbench.report.warnings.size(), 6U);
  EXPECT_EQ(questions.boxes.back().text,
            "The window must be from 1 to 5 samples wide.\nThat is at most 0.500 s.");
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(SmoothCommand, MedianAsksForAnOddWidth) {
  const Samples x = {5, 1, 4, 2, 9, 0};
  SetChannels(trial, {x});
  AnswerForm({{"WindowWidth", "2"}});
  questions.boxAnswers = {Button::Yes};
  Run("smooth.median");
  EXPECT_EQ(Channel(trial, 1), (Samples{5, 4, 4, 4, 9, 0}));
  EXPECT_EQ(workbench.smoothing.WindowWidth, 3) << "the raised width is remembered";
  SetChannels(trial, {x});
  AnswerForm({{"WindowWidth", "2"}});
  questions.boxAnswers = {Button::No};
  Run("smooth.median");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 1, 2, 2, 9, 0})) << "the lower of each pair";
}

TEST_F(SmoothCommand, RmsStartsAtATenthOfASecond) {
  SetChannels(trial, {Samples(300, -2.0F)}, 1000.0);
  std::string offered;
  questions.formAnswers.emplace_back([&](Form& form) {
    offered = PlainNumber(*std::get<double*>(form.FindField("WindowWidth")->target));
    return std::string("OK");
  });
  Run("smooth.rms");
  EXPECT_EQ(offered, "0.1");
  EXPECT_EQ(workbench.smoothing.WindowWidth, 100);
  EXPECT_EQ(Channel(trial, 1), Samples(300, 2.0F));
}

TEST_F(SmoothCommand, InterpolationBetweenTheCursors) {
  const Samples x = {9, 0, 7, 7, 7, 1, 9};
  SetChannels(trial, {x, x});
  SetCursors(2, 6);
  questions.PickChannels({2});
  questions.boxAnswers = {Button::Yes};
  Run("smooth.interpolate");
  EXPECT_EQ(questions.boxes.back().title, "Interpolate Data");
  EXPECT_EQ(Channel(trial, 1), x);
  EXPECT_EQ(Channel(trial, 2), (Samples{9, 0, 0.25F, 0.5F, 0.75F, 1, 9}));

  // A tenth cannot be held exactly: the accumulated end is not the sample that was there.
  SetChannels(trial, {{0, 5, 5, 5, 5, 5, 5, 5, 5, 5, 1}});
  questions.boxAnswers = {Button::Yes, Button::Yes};
  RunPicking("smooth.interpolate", {1});
  EXPECT_EQ(trial.CursorLo, 1);
  float accumulated = 0.0F;
  for (int i = 0; i < 10; ++i) {
    accumulated = static_cast<float>(accumulated + 0.1);
  }
  EXPECT_EQ(trial.Data(11, 1), accumulated);
  EXPECT_NE(accumulated, 1.0F);

  for (const Button button : {Button::Cancel, Button::No}) {
    EXPECT_EQ(workbench.view, nullptr);
    questions.boxAnswers = {button};
    Run("smooth.interpolate");
    EXPECT_EQ(questions.boxes.back().title, "No Interval Was Set");
  }
  EXPECT_NE(workbench.view, nullptr) << "No opens the graph, where the cursors are set";
  // Which a bias taken away closes again, since it shows other data.
  questions.inputAnswers = {"3"};
  questions.PickCancel();
  Run("bias.autozero-left");
  EXPECT_NE(workbench.view, nullptr);
  questions.inputAnswers = {"3"};
  RunPicking("bias.autozero-left", {1});
  EXPECT_EQ(workbench.view, nullptr);
}

}  // namespace
}  // namespace velmora::test
