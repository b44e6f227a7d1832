#include "graph/multi/multi_view.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "graph/multi/graph_layout.hpp"
#include "graph/multi/multi_values.hpp"
#include "graph/single_view.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

std::vector<int> GraphsOf(GraphLayout layout, int nChan, const std::vector<int>& selected = {}) {
  ChannelFlags flags{};
  ChannelNumbers typed{};
  for (int c = 1; c <= nChan; ++c) {
    flags[c] = selected.empty();
    typed[c] = 10 - c;
  }
  for (const int c : selected) {
    flags[c] = true;
  }
  const PerChannel<std::int16_t> graphs = AssignGraphs(layout, nChan, flags, typed);
  return {graphs.begin() + 1, graphs.begin() + 1 + nChan};
}

TEST(GraphLayoutTest, ChannelsShareGraphsByTheirPlaceInTheTrial) {
  using List = std::vector<int>;
  EXPECT_EQ(GraphsOf(GraphLayout::OneByOne, 5, {2, 5}), (List{0, 1, 0, 0, 2}));
  EXPECT_EQ(GraphsOf(GraphLayout::Pairs, 5), (List{1, 1, 2, 2, 3}));
  EXPECT_EQ(GraphsOf(GraphLayout::Pairs, 5, {1, 4}), (List{1, 0, 0, 2, 0}));
  EXPECT_EQ(GraphsOf(GraphLayout::Triplets, 7), (List{1, 1, 1, 2, 2, 2, 3}));
  EXPECT_EQ(GraphsOf(GraphLayout::HalfToHalf, 5), (List{1, 2, 3, 1, 2}));
  EXPECT_EQ(GraphsOf(GraphLayout::HalfToHalf, 6, {2, 5}), (List{0, 2, 0, 0, 2, 0}));
  EXPECT_EQ(GraphsOf(GraphLayout::Halves, 5), (List{1, 1, 1, 2, 2}));
  EXPECT_EQ(GraphsOf(GraphLayout::Combinations, 3), (List{9, 8, 7}));
}

/// Four channels of 101 samples at 100 Hz: counting up, down from -1, a wave of eight samples, a constant.
struct MultiViewTest : FileTest {
  std::vector<WindowRequest> requests;

  void SetUp() override {
    const Samples up = CountingUp(101);
    Samples down;
    Samples wave;
    for (int i = 1; i <= 101; ++i) {
      down.push_back(static_cast<float>(-i));
      wave.push_back(i % 8 < 4 ? 2.0F : -1.0F);
    }
    SetChannels(trial, {up, down, wave, Samples(101, 3.0F)});
    trial.ChanUnits[1] = "V";
    trial.ChanUnits[2] = "V";
    trial.ChanUnits[3] = "";
    trial.ChanUnits[4] = "";
    trial.TrialTitle = "Jump";
    trial.FileName = "data/jump.vmb";
    workbench.StartDir = directory.Path("");
  }
  void Open(Edits fields = {}, bool all = true) {
    AnswerForm(WithChannels(all ? trial.NChan : 0, std::move(fields)));
    Run("graph.multi");
    if (FindMultiView(workbench) != nullptr) {
      View().onRequest = [this](WindowRequest request) { requests.push_back(request); };
    }
  }
  MultiView& View() { return OpenMultiView(workbench); }
  void Key(KeyPress key) { EXPECT_TRUE(View().PressKey(key)); }
  void ExpectWindow(double min, double max) {
    for (const Graph& graph : View().Graphs()) {
      EXPECT_NEAR(graph.Abscissa.Minimum, min, 1e-12);
      EXPECT_NEAR(graph.Abscissa.Maximum, max, 1e-12);
    }
  }
  void ExpectOrdinate(int graph, double min, double max) {
    EXPECT_EQ(View().GraphAt(graph).Ordinate.Minimum, min) << graph;
    EXPECT_EQ(View().GraphAt(graph).Ordinate.Maximum, max) << graph;
  }
  Texts MarksOf(int graph) {
    Texts texts;
    for (const GraphCursor& cursor : View().GraphAt(graph).Cursors) {
      if (cursor.Kind == CursorKind::Value) {
        texts.push_back(FormatNumber(cursor.XPosition, "0.000") + ": " + cursor.Name);
      }
    }
    return texts;
  }
};

TEST_F(MultiViewTest, OpensWhatTheDialogueSaysAndKeepsItWithTheTrial) {
  AnswerForm({});  // nothing is selected: the box, and the form is asked again
  AnswerForm({}, "Cancel");
  Run("graph.multi");
  EXPECT_EQ(LastBox(), "|No graphs selected.");
  EXPECT_EQ(FindMultiView(workbench), nullptr);
  EXPECT_EQ(trial.ChanGraphSlot[1], 0);  // nothing was taken
  Open({{"chkPaired", "true"}, {"txtWindow", "0.25"}, {"txtPan", "0.5"}});
  EXPECT_EQ(questions.boxes.back().title, "Panning Keys");
  EXPECT_EQ(workbench.graph.PanSize, 0.25);  // a pan above the window is the window
  EXPECT_EQ(View().NGraphs(), 2);
  EXPECT_EQ(View().ChannelsOf(2), (std::vector<int>{3, 4}));
  EXPECT_EQ(View().GraphAt(1).Ordinate.Caption, "V");
  EXPECT_TRUE(trial.PairedGraphs);
  EXPECT_EQ(trial.ChanGraphSlot[4], 2);
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(View().TitleText(), "Multiaxis Graph of Jump");
  const std::size_t told = questions.boxes.size();
  Open({{"chkCombinations", "true"},
        {"txtChannels 1", "3"},
        {"txtChannels 2", "1"},
        {"txtChannels 3", "3"},
        {"channels 4", "false"}},
       false);
  EXPECT_EQ(questions.boxes.size(), told);  // the keys are told once a run
  EXPECT_EQ(View().ShownGraphs(), (std::vector<int>{1, 3}));
  EXPECT_EQ(View().GraphOf(4), 0);
  EXPECT_THROW(View().Click(2), std::out_of_range);
  Open({{"optSingle", "Single-axis"}});
  EXPECT_EQ(OpenSingleView(workbench).Drawing().VisiblePlots(), 4);
  EXPECT_EQ(workbench.graph.MultiAxisMode, false);
}

TEST_F(MultiViewTest, KeysWantAGraphAndArrowsStepByWhatIsHeld) {
  Open();
  Key({.name = "2"});
  EXPECT_EQ(LastBox(), "Click on a Graph|Click on a graph before using keyboard functions.");
  EXPECT_FALSE(View().PressKey({.name = "Q"}));
  Run("cursor.two");
  EXPECT_EQ(View().CommonCursors(), (std::vector<double>{0.25, 0.75}));
  Run("zoom.pan");
  EXPECT_EQ(questions.boxes.back().text.substr(0, 43), "Currently selected graph is number 1.\nFirst");
  View().Click(3);
  struct Step {
    KeyPress key;
    int lo;
    int hi;
  };
  const Step steps[] = {
      {{.name = "Right"}, 27, 76},
      {{.name = "Left", .shift = true}, 22, 76},
      {{.name = "Up", .ctrl = true}, 22, 86},
      {{.name = "Down", .alt = true}, 22, 36},
      {{.name = "Right", .shift = true, .ctrl = true}, 36, 101},  // the left one, to the end
      {{.name = "Left", .shift = true, .ctrl = true, .alt = true}, 36, 100},
      {{.name = "Down", .ctrl = true, .alt = true}, 1, 100}};
  for (const Step& step : steps) {
    Key(step.key);
    EXPECT_EQ(trial.CursorLo, step.lo);
    EXPECT_EQ(trial.CursorHi, step.hi);
  }
  Key({.name = "R"});
  EXPECT_EQ(View().CommonCursors(), (std::vector<double>{0.25, 0.75}));
  for (const Graph& graph : View().Graphs()) {
    EXPECT_EQ(graph.Cursors.size(), 2U);
  }
  Run("view.exit");
  Open({{"channels 2", "false"}, {"channels 3", "false"}, {"channels 4", "false"}}, false);
  EXPECT_EQ(View().Selected(), 1);  // one graph alone needs no click
  Key({.name = "1"});
  EXPECT_EQ(trial.CursorHi, 51);
}

TEST_F(MultiViewTest, PansByItsOwnStepAndZoomsAllGraphs) {
  Open({{"txtWindow", "0.4"}, {"txtPan", "0.3"}});
  View().Click(1);
  ExpectWindow(0, 0.4);
  Key({.name = "PageUp"});
  ExpectWindow(0.3, 0.7);
  Key({.name = "PageUp"});
  ExpectWindow(0.6, 1.0);
  EXPECT_TRUE(requests.empty());
  Key({.name = "PageUp"});
  ExpectWindow(0.6, 1.0);
  Key({.name = "PageDown", .ctrl = true});
  ExpectWindow(0, 0.4);
  EXPECT_EQ(requests.size(), 2U);  // beeps
  Key({.name = "2"});
  Key({.name = "W"});
  ExpectWindow(0.1, 0.3);
  EXPECT_TRUE(View().WindowMode());
  Key({.name = "F"});
  ExpectWindow(0, 1.01);
  View().ShowRange(2, 0.2, 0.6, -50, 0);
  ExpectWindow(0.2, 0.6);
  ExpectOrdinate(2, -50, 0);
  ExpectOrdinate(1, 1, 101);
}

TEST_F(MultiViewTest, ScalesFollowTheMenu) {
  Open();
  ExpectOrdinate(1, 1, 101);
  ExpectOrdinate(2, -101, -1);
  ExpectOrdinate(4, 2, 4);  // one value, a unit around it
  Run("scale.include-zero");
  ExpectOrdinate(1, 0, 101);
  ExpectOrdinate(2, -101, 0);
  Run("scale.maximum");
  ExpectOrdinate(3, -2, 2);
  Run("scale.same");
  for (int graph = 1; graph <= 4; ++graph) {
    ExpectOrdinate(graph, -101, 101);
  }
  Run("scale.min-max");
  ExpectOrdinate(1, -101, 101);
  EXPECT_EQ(View().ShownScale(), static_cast<int>(MultiScale::MinMax));
  Run("scale.0-to-100");
  ExpectOrdinate(4, 0, 100);
  Run("view.exit");
  Open({{"cmbScale", "No change"}});
  ExpectOrdinate(4, 0, 100);
  for (std::int32_t i = 1; i <= 101; ++i) {
    trial.Data(i, 1) = -2.0e6F;
    trial.Data(i, 3) = i == 50 ? 5.0F : NAN;
  }
  Run("zoom.reset-all");
  View().SetScale(Scale::Auto);
  ExpectOrdinate(1, -2.0e6, -999999);  // where the search for the largest begins
  ExpectOrdinate(3, 4, 6);
}

TEST_F(MultiViewTest, ValuesBetweenTheCursorsAreMarked) {
  Open();
  trial.CursorLo = 0;
  trial.CursorHi = 500;  // after a crop
  Run("value.extremes");
  EXPECT_EQ(MarksOf(1), (Texts{"1.000: 101.0000 V", "0.000: 1.0000 V"}));
  EXPECT_EQ(MarksOf(4), (Texts{"0.000: 3.0000", "0.000: 3.0000"}));  // the first of equals
  EXPECT_EQ(trial.CursorHi, 101);
  Run("value.remove");
  trial.CursorLo = 20;
  trial.CursorHi = 11;
  Run("value.maximums");
  EXPECT_EQ(MarksOf(1), (Texts{"0.190: 20.0000 V, 0.190 s"}));
  Run("value.minimums");
  EXPECT_EQ(MarksOf(1).size(), 2U);  // added to what is there
  Run("value.remove");
  trial.CursorLo = 1;
  trial.CursorHi = 16;
  questions.inputAnswers = {"-0.03"};
  Run("value.integrals");
  // 2 at samples 1 to 3, -1 at 4 to 7, 2 at 8 to 11, -1 at 12 to 15, 2 at 16.
  EXPECT_EQ(MarksOf(3), (Texts{"0.025: 0.0600", "0.060: -0.0400", "0.100: 0.0800", "0.140: -0.0400"}));
  EXPECT_EQ(workbench.graph.SmallestIntegral, 0.03);
  questions.inputAnswers = {"0"};
  Run("value.integrals");
  EXPECT_EQ(MarksOf(3).back(), "0.160: 0.0200");  // the last one is closed by the end of the range
  questions.inputAnswers = {"2"};
  Run("format.number");
  EXPECT_EQ(workbench.patterns.ValuePattern, "0.00");
  questions.inputAnswers = {"7"};
  Run("format.number");
  EXPECT_EQ(workbench.patterns.ValuePattern, "0.00");
  questions.inputAnswers = {"e"};
  Run("format.number");
  EXPECT_EQ(workbench.patterns.ValuePattern, "#.000000E+00");
}

TEST_F(MultiViewTest, TheSidebarTellsTimesAndValues) {
  Open({{"channels 1", "true"}, {"channels 3", "true"}}, false);
  EXPECT_EQ(View().SidebarLines(), (Texts{"Trial: Jump", "Frequency:  100.00 Hz", "Duration:  1.000"}));
  Run("cursor.one");
  View().MoveCursor(1, 0.25);
  trial.ChanLabel[1] = "Knee";
  trial.ChanLabel[3] = "Hip";
  EXPECT_EQ(View().SidebarLines(), (Texts{"Trial: Jump", "Cursor time:  0.250", "      n =  26",
                                          "Ch.#00:Knee", " 26.0000 V", "Ch.#02:Hip", " 2.0000"}));
  Run("cursor.two");
  View().MoveCursor(2, 0.125);
  EXPECT_EQ(View().SidebarLines(),
            (Texts{"Trial: Jump", "Cursor#1   Yellow:", "Time:  0.250", "      n =  26", "00: 26.0000 V",
                   "02: 2.0000", "Cursor#2     Red:", "Time:  0.125", "      n =  14", "00: 14.0000 V",
                   "02: -1.0000", "Cursor duration:", "Duration:  0.125", "      n =  12"}));
}

TEST_F(MultiViewTest, ABandReachesSoManyStandardDeviationsToBothSides) {
  for (std::int32_t i = 1; i <= 101; ++i) {
    trial.Data(i, 2) = i == 60 ? 30.0F : 1.0F;
  }
  Open({{"chkSDs", "true"}, {"cmbScale", "SD of 2"}});
  EXPECT_EQ(View().NGraphs(), 2);
  const Graph& graph = View().GraphAt(1);
  ASSERT_EQ(graph.Deviations.size(), 1U);
  EXPECT_EQ(graph.Deviations[0].K, 2.0);
  EXPECT_EQ(graph.Deviations[0].SDChannel, 2);
  EXPECT_EQ(graph.VisiblePlots(), 1);
  ExpectOrdinate(1, -1, 120);  // 1 - 2*1 (60 - 2*30 is more), and 60 + 2*30
  EXPECT_TRUE(trial.PairedGraphs);
}

TEST_F(MultiViewTest, CropsInterpolatesAndSavesAsTheOtherGraph) {
  Open();
  View().Click(1);
  Key({.name = "2"});
  AnswerForm({});
  Run("crop.outside");
  EXPECT_EQ(trial.NData, 51);
  EXPECT_EQ(View().CommonCursors()[0], View().Lead().Abscissa.Minimum);
  View().MoveCursor(1, 0.35);
  View().MoveCursor(2, 0.5);
  questions.pickAnswers.emplace_back([](ChannelPicker&) { return std::string("Cancel"); });
  trial.FileChanged = true;
  Key({.name = "X"});
  EXPECT_TRUE(trial.FileChanged);  // as it was
  EXPECT_EQ(FindMultiView(workbench), &View());
  questions.PickChannels({3});
  questions.boxAnswers = {Button::Yes, Button::Yes};
  Key({.name = "X"});
  EXPECT_EQ(questions.boxes.back().title, "Replot Necessary");
  EXPECT_EQ(workbench.view, nullptr);
  Open();
  Run("style.save");
  Run("background.white");
  Run("style.recall");
  EXPECT_EQ(View().GraphAt(2).Background, kBlack);
  Run("cursor.values");  // the other graph's alone
  EXPECT_FALSE(workbench.report.failures.empty());
}

TEST_F(MultiViewTest, ATrialThatChangesIsDrawnAsItIs) {
  Open({{"chkPaired", "true"}});
  Run("cursor.two");
  Run("value.extremes");
  questions.PickChannels({1});
  Run("math.negate");
  ExpectOrdinate(1, -101, -1);
  EXPECT_EQ(MarksOf(1), Texts()) << "which the samples have no more";
  EXPECT_EQ(View().Cursors(), 2);
  Run("cursor.none");
  const std::string path = SaveAs("paired.vmb");
  Open({{"channels 2", "false"}, {"channels 3", "false"}, {"channels 4", "false"}, {"chkPaired", "false"}},
       false);
  EXPECT_EQ(View().NGraphs(), 1);
  trial.FileChanged = false;
  LoadPath(path);
  EXPECT_EQ(trial.NData, 101) << LastBox();
  EXPECT_TRUE(trial.PairedGraphs);
  ASSERT_NE(FindMultiView(workbench), nullptr);
  EXPECT_EQ(View().NGraphs(), 2);  // as the file has it
  Run("value.extremes");
  LoadPath(path);
  EXPECT_EQ(MarksOf(1), Texts()) << "of the trial before";
  trial.DiscardData();
  EXPECT_FALSE(View().TrialChanged());
}

}  // namespace
}  // namespace velmora::test
