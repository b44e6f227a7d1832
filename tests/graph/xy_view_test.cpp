#include "graph/xy/xy_view.hpp"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <numbers>

#include "graph/xy/path_measures.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A square of side 2 round (5, 1), counter-clockwise, two samples a side, and back at its start; then a
/// channel that is 3 throughout. At 10 Hz.
struct XYViewTest : CommandTest {
  void SetUp() override {
    SetChannels(trial, {{4, 5, 6, 6, 6, 5, 4, 4, 4}, {0, 0, 0, 1, 2, 2, 2, 1, 0}, Samples(9, 3.0F)}, 10);
    Name(1, "Hip", "deg");
    Name(2, "Knee", "deg");
    Name(3, "Force", "N");
    trial.TrialTitle = "Walk";
  }
  void Name(int channel, const char* label, const char* units) {
    trial.ChanLabel[static_cast<std::size_t>(channel)] = label;
    trial.ChanUnits[static_cast<std::size_t>(channel)] = units;
  }
  XYView& Open(const Edits& fields) {
    AnswerForm(fields);
    Run("graph.xy");
    return OpenXYView(workbench);
  }
  [[nodiscard]] double Number(std::size_t row, std::size_t column) {
    const ResultTable& table = OpenXYView(workbench).Table();
    return std::get<double>(table.rows.at(row).at(column));
  }
  [[nodiscard]] bool IsEmpty(std::size_t row, std::size_t column) {
    return std::holds_alternative<std::monostate>(OpenXYView(workbench).Table().rows.at(row).at(column));
  }
};

enum Column { kLabel = 1, kArea, kLength, kR, kSlope, kCount };

TEST_F(XYViewTest, TheDialogueFollowsTheUnitsUntilSomebodyChooses) {
  std::vector<std::string> equal;
  questions.formAnswers.emplace_back([&equal](Form& form) {
    EXPECT_EQ(form.Name(), "frmXYChoose");
    const auto state = [&] { equal.push_back(Form::TextOf(*form.FindField("chkEqual"))); };
    state();
    Type(form, {{"channels 2", "false"}, {"channels 3", "true"}});
    state();
    Type(form, {{"channels 2", "true"}, {"channels 3", "false"}});
    state();
    Type(form, {{"chkEqual", "false"}, {"comX", "Time"}, {"comX", "00: Hip"}});
    state();
    Type(form, {{"channels 2", "false"}});
    return std::string("OK");  // refused: nothing against X
  });
  questions.formAnswers.emplace_back([](Form& form) {
    Type(form, {{"channels 2", "true"}, {"channels 3", "true"}, {"chkTime", "true"}});
    return std::string("OK");  // refused: two channels have no colours of time
  });
  questions.formAnswers.emplace_back([](Form& form) {
    Type(form, {{"channels 3", "false"}});
    return std::string("OK");
  });
  Run("graph.xy");
  EXPECT_EQ(equal[0], equal[2]);
  EXPECT_NE(equal[0], equal[1]);
  EXPECT_EQ(equal[3], equal[1]) << "what a person chose stays";
  ASSERT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(questions.boxes[0].text, "You must choose at least 1 channel.");
  EXPECT_EQ(questions.boxes[1].title, "Colour by Time");
  const XYView& view = OpenXYView(workbench);
  EXPECT_EQ(view.TitleText(), "X-Y Plot of Walk");
  EXPECT_EQ(view.Drawing().Abscissa.Caption, "Hip (deg)");
  EXPECT_EQ(view.Drawing().Ordinate.Caption, "Knee (deg)");
  EXPECT_FALSE(view.Drawing().EqualScales);
  ASSERT_TRUE(view.Drawing().Path.has_value());
  EXPECT_TRUE(view.Drawing().Path->ColourByTime);
}

TEST_F(XYViewTest, MeasuresThePath) {
  Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"channels 3", "true"}});
  EXPECT_DOUBLE_EQ(Number(0, kArea), 4.0);
  EXPECT_DOUBLE_EQ(Number(0, kLength), 8.0);
  EXPECT_EQ(Number(0, kCount), 9);
  // Sums of squares and products by hand, less those of the means 44/9 and 8/9.
  const double sxx = 222 - 44.0 * 44 / 9;
  const double sxy = 40 - 44.0 * 8 / 9;
  const double syy = 14 - 8.0 * 8 / 9;
  EXPECT_NEAR(Number(0, kSlope), sxy / sxx, 1e-12);
  EXPECT_NEAR(Number(0, kR), sxy / std::sqrt(sxx * syy), 1e-12);
  EXPECT_DOUBLE_EQ(Number(1, kArea), 0.0);
  EXPECT_TRUE(IsEmpty(1, kR)) << "a constant channel";
  EXPECT_DOUBLE_EQ(Number(1, kSlope), 0.0);

  // An ellipse run through clockwise: -pi a b, and its length by Ramanujan (1914).
  std::vector<double> x;
  std::vector<double> y;
  constexpr int kCorners = 100'000;
  for (int i = 0; i <= kCorners; ++i) {
    x.push_back(100 + 3 * std::cos(2 * std::numbers::pi * i / kCorners));
    y.push_back(-2 * std::sin(2 * std::numbers::pi * i / kCorners));
  }
  const PathMeasures ellipse = MeasurePath(x, y);
  EXPECT_NEAR(*ellipse.loopArea, -6 * std::numbers::pi, 1e-7);
  EXPECT_NEAR(*ellipse.length, std::numbers::pi * (15 - std::sqrt(11.0 * 9)), 1e-5);
  EXPECT_NEAR(*ellipse.r, 0, 1e-12);
}

TEST_F(XYViewTest, SamplesThatAreNoNumbersAreGaps) {
  trial.Data(2, 1) = std::numeric_limits<float>::infinity();
  trial.Data(5, 2) = kNan;
  Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"chkEllipse", "true"}});
  EXPECT_EQ(Number(0, kCount), 7);
  EXPECT_DOUBLE_EQ(Number(0, kArea), 3.5) << "a corner is cut off";
  const Graph& graph = OpenXYView(workbench).Drawing();
  EXPECT_LT(graph.Abscissa.Maximum, 9);
  ASSERT_EQ(graph.Points.size(), 2U);
  EXPECT_EQ(graph.Points[0].text, "Start");
  EXPECT_EQ(graph.Ellipses.size(), 1U);

  for (int i = 1; i <= 9; ++i) {
    trial.Data(i, 2) = kNan;
  }
  Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"chkEllipse", "true"}});
  EXPECT_EQ(Number(0, kCount), 0);
  EXPECT_TRUE(IsEmpty(0, kArea));
  EXPECT_EQ(LastBox(), "Too Few Data|An ellipse needs 3 points at least.");
  EXPECT_TRUE(OpenXYView(workbench).Drawing().Points.empty());
}

TEST_F(XYViewTest, FewSamplesAndEqualChannelsAreNoTrouble) {
  for (const int samples : {1, 2}) {
    SetChannels(trial, {Samples(static_cast<std::size_t>(samples), 2.0F), {1, 5}});
    Name(1, "Hip", "deg");
    Open({{"comX", "00: Hip"}, {"channels 2", "true"}});
    EXPECT_EQ(Number(0, kCount), samples);
    EXPECT_DOUBLE_EQ(Number(0, kLength), samples == 1 ? 0.0 : 4.0);
    EXPECT_EQ(OpenXYView(workbench).Drawing().Points.size(), static_cast<std::size_t>(samples));
  }
  SetChannels(trial, NoiseChannels(64, 50));
  Name(1, "Hip", "deg");
  Open(WithChannels(64, {{"comX", "00: Hip"}, {"chkEllipse", "true"}}));
  EXPECT_EQ(OpenXYView(workbench).Drawing().Plots.size(), 64U);
  EXPECT_DOUBLE_EQ(Number(0, kR), 1.0) << "X against itself";
  EXPECT_DOUBLE_EQ(Number(0, kSlope), 1.0);
  EXPECT_NEAR(OpenXYView(workbench).Drawing().Ellipses[0].minor, 0, 1e-5);
  EXPECT_EQ(Number(63, kCount), 50);
}

TEST_F(XYViewTest, CursorsChooseTheRangeOrAStrongerStretch) {
  SetCursors(3, 7);
  XYView& view = Open({{"comX", "00: Hip"}, {"channels 2", "true"}});
  EXPECT_EQ(view.Range().lo, 1);
  EXPECT_EQ(view.Drawing().Path->Stronger, (SampleSpan{3, 8}));
  EXPECT_STREQ(view.WindowCaption(), "&Window");
  EXPECT_TRUE(view.PressKey({.name = "W"}));  // what lies between: (4..6, 0..2) as a whole, from sample 3
  EXPECT_STREQ(view.WindowCaption(), "&Full");
  EXPECT_TRUE(view.PressKey({.name = "F"}));
  EXPECT_STREQ(view.WindowCaption(), "&Window");

  XYView& part = Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"optRange", "Between cursors"}});
  EXPECT_EQ(part.Range().lo, 3);
  EXPECT_EQ(part.Range().hi, 7);
  EXPECT_EQ(Number(0, kCount), 5);
  EXPECT_DOUBLE_EQ(Number(0, kLength), 4.0);
  EXPECT_DOUBLE_EQ(Number(0, kArea), 2.0) << "half the square";
  EXPECT_EQ(part.Drawing().Path->Stronger, SampleSpan());
}

TEST_F(XYViewTest, LooksAndScalesAreThoseOfEveryGraph) {
  XYView& view = Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"channels 3", "true"}});
  for (const char* id : {"scale.10-v", "grid.none", "background.white", "line.thick", "point.circle",
                         "zoom.area", "xy.marks", "xy.equal-scales", "xy.ellipse"}) {
    Run(id);
  }
  const Graph& graph = view.Drawing();
  EXPECT_EQ(graph.Ordinate.Minimum, -10);
  EXPECT_EQ(graph.Background, kWhite);
  EXPECT_EQ(graph.Plots[1].LineWidth, 3);
  EXPECT_EQ(graph.Track, TrackMode::ZoomArea);
  EXPECT_TRUE(graph.Points.empty());
  EXPECT_TRUE(graph.EqualScales);
  EXPECT_EQ(graph.Ellipses.size(), 2U);
  Run("xy.colour-by-time");
  EXPECT_FALSE(graph.Path->ColourByTime);
  EXPECT_EQ(questions.boxes.back().title, "Colour by Time");
  Run("view.reset");
  EXPECT_EQ(graph.Background, kBlack);
  EXPECT_NEAR(graph.Ordinate.Maximum, 3, 2) << "the ellipse of the square is in view";

  // What needs time on the abscissa is refused, and nothing happens.
  EXPECT_FALSE(view.PressKey({.name = "2"}));
  EXPECT_THROW(view.MoveCursor(1, 0.5), std::out_of_range);
  EXPECT_THROW(view.Click(2), std::out_of_range);
  Run("cursor.two");
  EXPECT_TRUE(graph.Cursors.empty());
  EXPECT_FALSE(workbench.report.failures.empty());
}

TEST_F(XYViewTest, AClickTellsOfTheNearestSample) {
  XYView& view = Open({{"comX", "00: Hip"}, {"channels 2", "true"}});
  view.Pick(6.02, 1.98, {.x = 0.01, .y = 0.01});
  ASSERT_TRUE(view.PickedSample().has_value());
  EXPECT_EQ(view.PickedSample()->sample, 5);
  const std::string text = view.PickedText();
  EXPECT_EQ(text.substr(0, 6), "n = 5,");
  EXPECT_NE(text.find("0.400 s"), std::string::npos) << text;
  EXPECT_NE(text.find("6.0000 deg, 2.0000 deg"), std::string::npos) << text;
  EXPECT_EQ(view.Drawing().Points.back().text, text);
  view.Pick(5, 1, {.x = 0.01, .y = 0.01});  // the middle of the square: nothing is near
  EXPECT_FALSE(view.PickedSample().has_value());
  EXPECT_EQ(view.Drawing().Points.size(), 2U);
}

TEST_F(XYViewTest, ShowsTheTrialAsItIsNow) {
  Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"channels 3", "true"}});
  trial.AllocateData(2, 9);
  EXPECT_TRUE(OpenXYView(workbench).TrialChanged());
  EXPECT_EQ(OpenXYView(workbench).Table().rows.size(), 1U) << "the third channel is gone";
  trial.AllocateData(1, 9);
  EXPECT_FALSE(OpenXYView(workbench).TrialChanged()) << "nothing is left against X";

  SetUp();
  SetCursors(6, 9);
  XYView& view = Open({{"comX", "00: Hip"}, {"channels 2", "true"}, {"optRange", "Between cursors"}});
  SetChannels(trial, {{1, 2, 3, 4}, {1, 2, 3, 5}});  // another trial, shorter than the range
  Name(1, "Hip", "deg");
  Name(2, "Knee", "deg");
  SetCursors(6, 9);
  EXPECT_TRUE(view.TrialChanged());
  EXPECT_LE(view.Range().hi, 4);
  EXPECT_GE(view.Range().lo, 1);

  SetUp();
  XYView& square = Open({{"comX", "00: Hip"}, {"channels 2", "true"}});
  SetCursors(3, 5);
  EXPECT_TRUE(square.TrialChanged());
  square.ToggleWindow();
  questions.PickChannels({3});
  Run("math.negate");
  EXPECT_TRUE(square.WindowMode()) << "what is shown stays where it is";
  questions.PickValues({{2, "10"}});
  Run("math.multiply");
  EXPECT_FALSE(square.WindowMode());
  EXPECT_GT(square.Drawing().Ordinate.Maximum, 20) << "the path is not left outside";
}

}  // namespace
}  // namespace velmora::test
