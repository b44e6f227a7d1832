#include "graph/graph.hpp"

#include <limits>
#include <stdexcept>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

void ExpectRange(const Axis& axis, double min, double max) {
  EXPECT_EQ(axis.Minimum, min);
  EXPECT_EQ(axis.Maximum, max);
}

struct GraphTest : testing::Test {
  Trial trial;
  Graph graph;

  void Plot(const std::vector<std::vector<float>>& channels, std::vector<int> visible) {
    SetChannels(trial, channels);
    graph.PlotXY(trial);
    for (const int c : visible) {
      graph.Plots[static_cast<std::size_t>(c - 1)].Visible = true;
    }
  }
};

TEST_F(GraphTest, AutoScaleSeesVisibleNumbersAlone) {
  constexpr float kGap = std::numeric_limits<float>::quiet_NaN();
  Plot({{1, kGap, 4, 2}, {-100, 0, 100, 0}, {kGap, kGap, kGap, kGap}, {7, 7, 7, 7}}, {1, 3});
  graph.AutoScaleOrdinate();
  ExpectRange(graph.Ordinate, 1, 4);
  graph.Plots[0].Visible = false;  // nothing but NaN left: the axis stays
  graph.AutoScaleOrdinate();
  EXPECT_EQ(graph.Ordinate.Maximum, 4);
  graph.Plots[3].Visible = true;  // a flat line is drawn in the middle
  graph.AutoScaleOrdinate();
  ExpectRange(graph.Ordinate, 6, 8);
}

TEST_F(GraphTest, AbscissaEndsInTheDurationItself) {
  Plot({std::vector<float>(8, 1.0F)}, {1});  // 0.07 s is no 32-bit number
  graph.AutoScaleAbscissa();
  ExpectRange(graph.Abscissa, 0.0, 0.07);
  for (int i = 1; i <= 8; ++i) {
    trial.Data(i, 0) = static_cast<float>(i) + 1.5F;
  }
  graph.PlotXY(trial);
  graph.AutoScaleAbscissa();
  ExpectRange(graph.Abscissa, 2.5, 9.5);
}

TEST_F(GraphTest, StylesOfVisiblePlots) {
  Plot(std::vector<std::vector<float>>(7, {1, 2}), {1, 2, 3, 5, 6, 7});
  graph.HalveLines();
  const auto line = [this](int c) { return graph.Plots[static_cast<std::size_t>(c - 1)].Line; };
  EXPECT_EQ(line(3), LineStyle::Solid);
  EXPECT_EQ(line(5), LineStyle::Dashed);
  graph.SetLine(LineStyle::None);
  EXPECT_EQ(line(4), LineStyle::Solid);
  EXPECT_EQ(line(7), LineStyle::None);
  graph.AlternateLines();
  EXPECT_EQ(line(1), LineStyle::Solid);
  EXPECT_EQ(line(6), LineStyle::DashDotDot);
  EXPECT_EQ(line(7), LineStyle::Solid);
}

TEST_F(GraphTest, StyleSurvivesItsTextAndBadTextChangesNothing) {
  Plot(std::vector<std::vector<float>>(3, {1, 2}), {1, 3});
  graph.SetLine(LineStyle::Dotted);
  graph.SetPoint(PointStyle::Diamond);
  graph.SetLineWidth(2.5);
  graph.Background = kWhite;
  graph.Abscissa.Log = true;
  graph.Ordinate.LabelsVisible = false;
  graph.TitleVisible = false;
  const std::string text = graph.StyleText();
  Graph other;
  SetChannels(trial, {{1, 2}, {1, 2}});  // a trial of fewer channels takes what fits
  other.PlotXY(trial);
  other.ReadStyle(text);
  EXPECT_EQ(other.Background, kWhite);
  EXPECT_TRUE(other.Abscissa.Log);
  EXPECT_FALSE(other.Ordinate.LabelsVisible);
  EXPECT_FALSE(other.TitleVisible);
  EXPECT_EQ(other.Plots[0].Line, LineStyle::Dotted);
  EXPECT_EQ(other.Plots[0].LineWidth, 2.5);
  EXPECT_EQ(other.Plots[1].Line, LineStyle::Solid);

  const std::string before = other.StyleText();
  const std::string bad[] = {"",
                             "velmora2 graph style 2\n",
                             "velmora2 graph style 1\ngraph 0 1 1\nplot 1 9 0 1\n",
                             "velmora2 graph style 1\ngraph 0 1 1\nplot 65 1 0 1\n",
                             "velmora2 graph style 1\ngraph 0 1 1\nplot 1 1 0 1e9\n",
                             "velmora2 graph style 1\ngraph 16777216 1 1\n",
                             "velmora2 graph style 1\ngraph 0 1 1\nordinate 1 1\n",
                             "velmora2 graph style 1\ngraph 0 1 1\nfile /etc\n"};
  for (const std::string& style : bad) {
    EXPECT_THROW(other.ReadStyle(style), std::invalid_argument) << style;
    EXPECT_EQ(other.StyleText(), before) << style;
  }
}

}  // namespace
}  // namespace velmora::test
