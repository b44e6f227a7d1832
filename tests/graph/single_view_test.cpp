#include "graph/single_view.hpp"

#include <algorithm>
#include <functional>

#include "support/command_test.hpp"

namespace velmora::test {
namespace {

/// A trial of 101 samples at 100 Hz, channel 1 counting from 1, channel 2 falling from -1.
struct SingleViewTest : CommandTest {
  std::vector<WindowRequest> requests;

  void SetUp() override {
    const Samples up = CountingUp(101);
    Samples down = up;
    std::transform(up.begin(), up.end(), down.begin(), std::negate<>());
    SetChannels(trial, {up, down});
    trial.ChanLabel[1] = "Force ";
    trial.ChanUnits[1] = "N";
    trial.TrialTitle = "/recordings/Jump";  // as files without a title have it
    trial.TrialName = "jump";
    trial.FileName = "data/jump.vmb";
    workbench.chooser.ChanSelected[1] = true;
  }

  void Open(const Edits& fields = {}) {
    AnswerForm(fields);
    Run("graph.single");
    View().onRequest = [this](WindowRequest request) { requests.push_back(request); };
  }

  /// The same trial as a stretch of a longer recording: at 534 s 32 bits are 61 us apart.
  void StartAt(double start) {
    CloseView(workbench);
    requests.clear();
    SetUp();
    for (int i = 1; i <= 101; ++i) {
      trial.Data(i, 0) = static_cast<float>(start + (i - 1) / 100.0);
    }
  }
  SingleView& View() { return OpenSingleView(workbench); }
  void Key(const char* name, bool ctrl = false) {
    EXPECT_TRUE(View().PressKey({.name = name, .ctrl = ctrl}));
  }
  void ExpectWindow(double min, double max) {
    EXPECT_DOUBLE_EQ(View().Drawing().Abscissa.Minimum, min);
    EXPECT_DOUBLE_EQ(View().Drawing().Abscissa.Maximum, max);
  }
  void ExpectOrdinate(double min, double max) {
    EXPECT_EQ(View().Drawing().Ordinate.Minimum, min);
    EXPECT_EQ(View().Drawing().Ordinate.Maximum, max);
  }
  void ExpectRange(int lo, int hi) {
    EXPECT_EQ(trial.CursorLo, lo);
    EXPECT_EQ(trial.CursorHi, hi);
  }
  void AnswerClip(bool resetTime, const char* press = "OK") {
    AnswerForm({{"ClipResetTime", resetTime ? "true" : "false"}}, press);
  }
};

TEST_F(SingleViewTest, OpensOnWhatTheDialogueSays) {
  int asked = 0;
  questions.formAnswers.emplace_back([&asked](Form& form) {
    ++asked;
    EXPECT_EQ(form.Name(), "frmGraphChoose");
    form.FindButton("None")->press();
    return std::string("OK");  // refused: nothing is selected
  });
  questions.formAnswers.emplace_back([](Form& form) {
    form.FindButton("Invert Selections")->press();
    Type(form, {{"lstColours 2", "7"}, {"CmbScale", "+/- 10 V"}, {"TxtWindow", "0.25"}, {"TxtPan", "0.3"}});
    return std::string("OK");
  });
  Run("graph.single");
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(questions.boxes.at(0).title, "No Channels Selected");
  const Graph& graph = View().Drawing();
  EXPECT_EQ(graph.Title, "Single-axis Graph of Jump");
  EXPECT_EQ(graph.Ordinate.Caption, "Force (N)");
  EXPECT_EQ(graph.Abscissa.Caption, "Time (s)");
  EXPECT_EQ(graph.VisiblePlots(), 2);
  EXPECT_EQ(graph.Plots[1].ColourIndex, 7);
  EXPECT_EQ(graph.Ordinate.Maximum, 10);
  EXPECT_EQ(workbench.graph.PanSize, 0);  // above the window
  ExpectWindow(0, 0.25);
  ExpectRange(1, 101);
  Run("view.reset");
  ExpectWindow(0, 1);
  EXPECT_EQ(graph.Ordinate.Minimum, -101);
  EXPECT_EQ(graph.Ordinate.Caption, "");  // two channels share the axis
  Run("view.exit");
  EXPECT_EQ(workbench.view, nullptr);
  Run("cursor.two");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
}

TEST_F(SingleViewTest, OpensNothingWithoutDataAndAsksAboutManyChannels) {
  SetChannels(trial, NoiseChannels(17, 50));
  questions.boxAnswers = {Button::Cancel, Button::OK};
  Run("graph.all");
  EXPECT_EQ(workbench.view, nullptr);
  EXPECT_FALSE(workbench.chooser.ChanSelected[17]);
  Run("graph.all");
  EXPECT_EQ(View().Drawing().VisiblePlots(), 17);
  EXPECT_EQ(questions.boxes.at(1).title, ">16 Channels Selected");
  Run("view.exit");
  trial.DiscardData();
  Run("graph.single");
  EXPECT_EQ(workbench.view, nullptr);
  EXPECT_TRUE(questions.formNames.empty());
}

TEST_F(SingleViewTest, CursorsSelectSamples) {
  Open();
  Key("1");
  ExpectRange(1, 51);
  EXPECT_EQ(View().Drawing().Cursors[0].Color, 0xFFFF);
  View().MoveCursor(1, 0.2);
  ExpectRange(1, 21);
  EXPECT_EQ(View().CountText(), "21");
  Run("cursor.two");  // the second half way to the end
  EXPECT_DOUBLE_EQ(View().Drawing().Cursors[1].XPosition, 0.6);
  EXPECT_EQ(View().Drawing().Cursors[1].Color, 0xFF);
  ExpectRange(21, 61);
  View().MoveCursor(2, 0.1);  // crossed: the range stays in order
  ExpectRange(11, 21);
  EXPECT_EQ(View().CountText(), "10");
  EXPECT_EQ(View().IntervalText(), "0.1000 s");
  Run("timebase.hhmmss");
  EXPECT_EQ(View().IntervalText(), "00:00:00.1000 hh:mm:ss");
  EXPECT_EQ(View().Drawing().Abscissa.Caption, "Time (hh:mm:ss)");
  Run("timebase.seconds");
  View().MoveCursor(2, 0.125);  // 13.5 goes to the even sample
  ExpectRange(14, 21);
  View().MoveCursor(2, 0.115);  // whatever 100 * 0.115 + 1 is in 64 bits, not what it is on paper
  EXPECT_EQ(trial.CursorLo, TimeToSample(trial, 0.115));
  View().MoveCursor(2, 99);
  ExpectRange(21, 101);
  EXPECT_THROW(View().MoveCursor(3, 0.5), std::out_of_range);
  EXPECT_THROW(View().MoveCursor(1, std::nan("")), std::invalid_argument);
  Key("Home");
  ExpectRange(1, 101);
  Run("background.white");
  EXPECT_EQ(View().Drawing().Cursors[0].Color, 0xFF0000);
  questions.boxAnswers = {Button::No, Button::Yes};
  Key("Delete");
  EXPECT_EQ(View().Cursors(), 2);
  Key("Delete");
  ExpectRange(1, 1);
  Key("Delete");  // a single cursor goes without a question
  EXPECT_EQ(questions.boxes.size(), 2U);
  Key("0");
  ExpectRange(1, 101);
}

TEST_F(SingleViewTest, SeveralCursorsAreNumberedDeletedAndPaired) {
  Open();
  Key("2");
  for (const double x : {0.3, 0.9, 0.6}) {
    View().AddCursors({x}, kRed);
  }
  Key("N");
  EXPECT_EQ(View().Drawing().Cursors[4].Name, "5");
  EXPECT_NE(View().TitleText().find("Cursor Numbers (press N"), std::string::npos);
  questions.inputAnswers = {"", "6", "1"};
  Key("Delete");
  Key("Delete");
  EXPECT_EQ(questions.boxes.at(0).title, "Cursor Number Invalid");
  EXPECT_EQ(View().Cursors(), 5);
  Key("Delete");  // left: 0.75, 0.3, 0.9, 0.6
  EXPECT_EQ(View().Drawing().Cursors[0].Name, "1");
  ExpectRange(31, 76);
  Key("N");
  EXPECT_EQ(View().Drawing().Cursors[0].Name, "");

  TemporaryDirectory directory;
  workbench.UserLevel = UserLevelKind::Expert;
  const std::string path = directory.Path("part.vmb");
  questions.boxAnswers = {Button::Yes, Button::Yes, Button::Yes};
  questions.inputAnswers = {"4", "3"};
  Key("F5");  // the last cursor begins no pair
  EXPECT_EQ(questions.boxes.back().title, "Invlaid Cursor Selection");
  EXPECT_FALSE(std::filesystem::exists(path));
  ExpectRange(31, 76);  // as the cursors stand
  questions.fileAnswers = {{path}};
  Key("F5");
  ExpectRange(61, 91);  // 0.9 and 0.6
  EXPECT_TRUE(std::filesystem::exists(path));
  trial.FileName = path;
  Run("file.load");
  EXPECT_EQ(trial.NData, 31);
  EXPECT_EQ(trial.Data(1, 1), 61.0F);
}

TEST_F(SingleViewTest, WindowAndPanWhereverTheTrialStarts) {
  for (const double start : {0.0, 534.0}) {
    SCOPED_TRACE(start);
    StartAt(start);
    const auto expectWindow = [&](double min, double max) { ExpectWindow(start + min, start + max); };
    Open({{"TxtWindow", "0.4"}});
    expectWindow(0, 0.4);
    Key("PageUp");
    expectWindow(0.4, 0.8);
    Key("PageUp");
    EXPECT_TRUE(requests.empty());
    Key("PageUp");  // 1.2 lies past the end
    EXPECT_EQ(requests, std::vector{WindowRequest::Beep});
    expectWindow(0.6, 1.0);
    Key("PageDown");
    expectWindow(0.2, 0.6);
    Key("PageDown", true);
    expectWindow(0, 0.4);
    Run("view.reset");
    Key("PageUp");  // all is shown: it stays
    expectWindow(0, 1);
    Key("2");
    View().MoveCursor(1, start + 0.7);
    View().MoveCursor(2, start + 0.5);
    Key("F");  // there is no window to leave
    EXPECT_FALSE(View().WindowMode());
    Key("W");
    expectWindow(0.5, 0.7);
    EXPECT_STREQ(View().WindowCaption(), "&Full");
    EXPECT_NEAR(workbench.graph.ViewDuration, 0.2, 1e-12);
    Key("Z");
    expectWindow(0, 1.01);  // NData / Rate
    Key("1");
    Key("Z");
    expectWindow(0, 0.7);
    Key("F");
    expectWindow(0, 1);
    Key("0");
    Run("view.window");
    EXPECT_FALSE(View().WindowMode());
  }
}

TEST_F(SingleViewTest, Scales) {
  Open();
  ExpectOrdinate(1, 101);
  Run("scale.include-zero");
  ExpectOrdinate(0, 101);
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_TRUE(picker.IsSelected(1));
    picker.Select(1, false);
    picker.Select(2, true);
    return std::string("Process");
  });
  Run("view.channels");
  EXPECT_EQ(View().Drawing().VisiblePlots(), 1);
  Run("scale.maximum");
  ExpectOrdinate(-101, 101);
  Run("scale.autoscale");
  Run("scale.include-zero");
  ExpectOrdinate(-101, 0);
  Run("scale.0-to-100");
  ExpectOrdinate(0, 100);
  EXPECT_EQ(workbench.graph.GraphScaleChoice, 2);
}

// Who works with the graph open sees the channels that were chosen for it, whatever others were worked on.
TEST_F(SingleViewTest, PicksOfOtherCommandsLeaveTheGraphItsChannels) {
  Open({{"channels 2", "true"}});
  const auto shown = [this] {
    std::string channels;
    for (const Plot& plot : View().Drawing().Plots) {
      channels += plot.Visible ? std::to_string(plot.Channel) : "";
    }
    return channels;
  };
  EXPECT_EQ(shown(), "12");
  questions.PickCancel();
  Run("math.absolute");
  EXPECT_EQ(shown(), "12");
  questions.PickChannels({2});
  Run("math.negate");
  EXPECT_EQ(shown(), "12");
  questions.PickChannels({1, 2});
  Run("channel.copy");
  EXPECT_EQ(shown(), "12");
  Run("view.reset");
  EXPECT_EQ(shown(), "12");
  questions.FillForm({{"channels 1", "false"}, {"channels 3", "true"}});
  Run("view.change-channels");
  EXPECT_EQ(shown(), "23");
  trial.CutChannels(1);  // as another trial that is loaded
  ASSERT_TRUE(workbench.view->TrialChanged());
  EXPECT_EQ(shown(), "1");
}

TEST_F(SingleViewTest, CropKeepsWhatLiesBetweenTheCursors) {
  for (const double start : {0.0, 534.0}) {
    SCOPED_TRACE(start);
    StartAt(start);
    const auto first = static_cast<float>(start + 0.2);
    Open({{"TxtWindow", "1"}});
    Run("crop.outside");  // no cursors: nothing is asked
    Key("2");
    View().MoveCursor(1, start + 0.5);
    View().MoveCursor(2, start + 0.2);
    AnswerClip(false, "Cancel");
    Run("crop.outside");
    EXPECT_EQ(trial.NData, 101);
    ExpectRange(21, 51);
    EXPECT_FALSE(trial.FileChanged);
    AnswerClip(false, "Crop");
    Run("crop.outside");
    EXPECT_EQ(trial.NData, 31);
    EXPECT_EQ(trial.Duration, 0.3);
    EXPECT_EQ(trial.Data(1, 0), first);
    EXPECT_EQ(trial.Data(1, 1), 21.0F);
    EXPECT_EQ(trial.Data(31, 2), -51.0F);
    EXPECT_TRUE(trial.FileChanged);
    ExpectRange(1, 31);  // the cursors went to the ends
    EXPECT_EQ(View().Drawing().Cursors[0].XPosition, View().Drawing().Abscissa.Minimum);
    EXPECT_EQ(View().Drawing().Cursors[1].XPosition, View().Drawing().Abscissa.Maximum);
    ExpectWindow(double{first}, double{first} + 0.3);
    EXPECT_EQ(View().Drawing().Ordinate.Maximum, 51);
    MarkChanged(workbench, false);
    AnswerClip(false);
    Run("crop.outside");  // all of it: nothing changes
    EXPECT_FALSE(trial.FileChanged);
    View().MoveCursor(1, start + 0.3);
    AnswerClip(true, "Trim Left");
    Run("crop.left");
    EXPECT_EQ(trial.NData, 21);
    EXPECT_EQ(trial.Data(1, 0), first);  // the old first time, not the cursor's
    EXPECT_EQ(trial.Data(1, 1), 31.0F);
    AnswerClip(true, "Trim Right");
    View().MoveCursor(2, start + 0.3);
    Run("crop.right");
    EXPECT_EQ(trial.NData, 11);
    EXPECT_EQ(trial.Data(11, 1), 41.0F);
    MarkChanged(workbench, false);
  }
}

TEST_F(SingleViewTest, CursorsOfATrialThatStartsLateCountFromItsStart) {
  const TemporaryDirectory directory;
  StartAt(534.0);
  Open();
  Key("1");
  ExpectRange(1, 51);
  Key("2");
  View().MoveCursor(1, 534.2);
  View().MoveCursor(2, 534.5);
  ExpectRange(21, 51);
  questions.PickCancel();
  Key("D");
  EXPECT_EQ(workbench.graph.StatLo, 21);
  EXPECT_EQ(workbench.graph.StatHi, 51);
  questions.boxAnswers = {Button::Yes};
  questions.fileAnswers = {{directory.Path("c.vmc")}};
  Key("F10");
  EXPECT_NE(ReadFile(directory.Path("c.vmc")).find("1\t21\t534.2000\t0.0000\n2\t51\t534.5000\t0.3000\n"),
            std::string::npos);
  View().MoveCursor(1, 0.2);  // before the trial
  ExpectRange(1, 51);
  Key("End");
  Key("Home");
  ExpectRange(1, 101);
  EXPECT_EQ(View().Drawing().Cursors[0].XPosition, 534.0);
  EXPECT_EQ(View().Drawing().Cursors[1].XPosition, 535.0);
}

TEST_F(SingleViewTest, CutRemovesWhatLiesBetweenTheCursors) {
  Open();
  Key("2");
  View().MoveCursor(1, 0.2);
  View().MoveCursor(2, 0.2);
  AnswerClip(false, "Cut");
  Run("crop.cut");  // the one sample under both
  EXPECT_EQ(trial.NData, 100);
  EXPECT_EQ(trial.Data(20, 1), 20.0F);
  EXPECT_EQ(trial.Data(21, 1), 22.0F);
  EXPECT_EQ(trial.Data(21, 0), 0.21F);
  EXPECT_EQ(trial.Notices,
            (Texts{"The times jump behind sample 20, where 1 were cut; cursors behind it count as if there "
                   "were no gap."}));
  View().MoveCursor(1, 0.9);
  View().MoveCursor(2, 5);
  AnswerClip(true, "Cut");
  Run("crop.cut");
  EXPECT_EQ(trial.NData, 90);
  AnswerForm({{"CursorLo", "30"}, {"CursorHi", "29"}}, "Cut");
  Run("crop.cut");
  EXPECT_EQ(questions.boxes.back().title, "Interval Too Small");
  Key("ScrollLock");
  View().MoveCursor(1, 0);
  AnswerClip(false, "Cut");
  Run("crop.cut");  // would leave nothing
  EXPECT_EQ(trial.NData, 90);
}

TEST_F(SingleViewTest, ACropInPercentIsAsMuchShorterInSeconds) {
  Run("timebase.percentage");
  Open();
  Key("2");
  View().MoveCursor(1, 20);
  View().MoveCursor(2, 50);
  AnswerClip(false, "Crop");
  Run("crop.outside");
  Run("timebase.seconds");
  EXPECT_EQ(trial.NData, 31);
  EXPECT_DOUBLE_EQ(trial.Duration, 0.3);
}

TEST_F(SingleViewTest, CursorFile) {
  TemporaryDirectory directory;
  Open();
  Key("F10");
  EXPECT_EQ(questions.boxes.at(0).title, "No Cursors");
  Key("2");
  questions.boxAnswers = {Button::No, Button::Yes, Button::Yes};
  Key("F10");
  EXPECT_TRUE(questions.files.empty());
  questions.fileAnswers = {{directory.Path("c")}, {directory.Path("no/such/c.vmc")}};
  Run("grid.thresholds");  // lines at no time
  Key("F10");
  EXPECT_EQ(questions.files.at(0).title, "Save cursor positions in .VMC file");
  EXPECT_EQ(questions.files.at(0).defaultName, "jump.vmc");
  EXPECT_EQ(ReadFile(directory.Path("c.vmc")),
            "Filename:\tdata/jump.vmb\nTrial code:\tjump\tTrial:\t-1\nDuration (s):\t1.000\n"
            "Sampling rate (Hz):\t100.00\n\nCursor\tSample\tTime (s)\tDelta t (s)\n"
            "1\t26\t0.2500\t0.0000\n2\t76\t0.7500\t0.5000\n");
  Run("cursor.save-events");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
}

TEST_F(SingleViewTest, ShowsTheTrialAsOtherCommandsLeaveIt) {
  Open();
  Key("5");
  ASSERT_TRUE(View().Values());
  EXPECT_EQ(View().Values()->Sample, "51");
  workbench.LastChanShown = 2;
  EXPECT_EQ(View().Values()->Rows.at(1).value, "-51.0000");
  Key("2");
  View().MoveCursor(2, 0.8);
  EXPECT_EQ(View().Values()->Sample, "81");  // of the cursor that was moved
  EXPECT_EQ(View().Values()->Rows.at(1).value, "-81.0000");
  Key("1");
  EXPECT_EQ(View().Values()->Sample, "51");
  questions.PickChannels({1});
  Run("math.negate");
  EXPECT_EQ(View().Drawing().Ordinate.Minimum, -101);
  EXPECT_EQ(View().Cursors(), 1);
  Key("F3");
  questions.PickCancel();
  Key("D");
  EXPECT_EQ(workbench.graph.StatLo, 51);
  EXPECT_EQ(workbench.graph.StatHi, 101);
  EXPECT_FALSE(View().PressKey({.name = "Q"}));
  Run("view.exit");
  EXPECT_TRUE(workbench.graph.GraphWindowMaximized);
}

TEST_F(SingleViewTest, CursorsStayOnTheirSamplesAndTheWholeTrialIsShownInEveryTimeBase) {
  Open();
  Key("2");
  View().MoveCursor(1, 0.2);
  View().MoveCursor(2, 0.5);
  Run("timebase.percentage");
  ExpectRange(21, 51);
  ExpectWindow(0, 100);
  questions.inputAnswers = {"50", "Angle", "deg"};
  Run("timebase.user-units");
  ExpectRange(21, 51);
  ExpectWindow(0, 50);
  EXPECT_DOUBLE_EQ(View().Drawing().Cursors[0].XPosition, 10);
  View().MoveCursor(2, 20);
  ExpectRange(21, 41);
  EXPECT_EQ(View().CountText(), "20");
  AnswerClip(false);
  Run("crop.outside");
  ExpectRange(1, 21);
  EXPECT_EQ(trial.Data(21, 1), 41.0F);
  ExpectWindow(10, 20);
  Run("view.exit");

  const TemporaryDirectory directory;
  WriteTrialFile(directory.Path("longer.vmb"),
                 [](Trial& longer) { SetChannels(longer, {std::vector<float>(3000, 1.0F)}, 100); });
  MarkChanged(workbench, false);
  trial.FileName = directory.Path("longer.vmb");
  Run("file.load");
  Run("graph.all");
  ExpectWindow(0, 29.99);
}

TEST_F(SingleViewTest, LooksAreKeptInAFile) {
  TemporaryDirectory directory;
  workbench.StartDir = directory.Path("");
  Open();
  for (const char* id :
       {"line.dotted", "line.thick", "point.circle", "grid.zero-no-labels", "background.blue"}) {
    Run(id);
  }
  const std::string style = View().Drawing().StyleText();
  Run("style.save");
  Run("grid.default");
  EXPECT_NE(View().Drawing().StyleText(), style);
  Run("style.recall");
  EXPECT_EQ(View().Drawing().StyleText(), style);
  WriteFile(directory.Path("Graph.cwx"), "no style");
  Run("style.recall");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(View().Drawing().StyleText(), style);
}

TEST_F(SingleViewTest, WhatTheMouseChoosesStaysOnTheTrialAndSetsTheStepOfPans) {
  Open();
  View().ShowRange(1, 0.2, 0.4, -5, 5);
  ExpectWindow(0.2, 0.4);
  EXPECT_EQ(View().Drawing().Ordinate.Maximum, 5);
  Key("PageUp");
  ExpectWindow(0.4, 0.6);
  View().ShowRange(1, -0.3, -0.1, -5, 5);  // before the trial: its beginning, as wide
  ExpectWindow(0.0, 0.2);
  View().ShowRange(1, -3, 4, -5, 5);
  ExpectWindow(0.0, 1.0);
  View().ShowRange(1, 0.5, 0.5, 3, 3);  // nothing to see there
  View().ShowRange(1, 0.6, 0.5, NAN, 3);
  View().ShowRange(1, 0.5, INFINITY, 4, 4 + 1e-7);
  ExpectWindow(0.0, 1.0);
  EXPECT_EQ(View().Drawing().Ordinate.Minimum, -5);

  View().ShowRange(1, 0.2, 0.4, -5, 5);
  View().Click(1, Clicked::Twice);
  ExpectWindow(0.0, 1.0);
  Key("PageUp");  // by the view window again, which is the whole trial
  ExpectWindow(0.0, 1.0);
  EXPECT_EQ(workbench.graph.ViewDuration, 1.0);
}

}  // namespace
}  // namespace velmora::test
