// What is painted, held against every single sample.
#include <limits>
#include <random>

#include "plot/traces/path_raster.hpp"
#include "plot/traces/pixel_scale.hpp"
#include "plot/traces/trace_columns.hpp"
#include "plot/traces/trace_raster.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;

using Pixels = std::vector<std::uint32_t>;

struct TracesTest : testing::Test {
  Trial trial;
  Graph graph;
  std::vector<TraceLook> looks;

  void Plot(const std::vector<std::vector<float>>& channels, double rate) {
    SetChannels(trial, channels, rate);
    Replot();
  }
  void Replot() {
    graph.PlotXY(trial);
    looks.clear();
    for (auto& plot : graph.Plots) {
      plot.Visible = true;
      looks.push_back({.colour = static_cast<std::uint32_t>(plot.Channel)});
    }
    graph.AutoScaleAbscissa();
    graph.AutoScaleOrdinate();
  }

  [[nodiscard]] PixelScale X() const { return PixelScale::Across(graph.Abscissa, kWidth); }
  [[nodiscard]] PixelScale Y() const { return PixelScale::Upward(graph.Ordinate, kHeight); }
  [[nodiscard]] Pixels Painted() const {
    Pixels pixels(kWidth * kHeight, 0);
    PaintColumns(TraceColumns(graph, X(), Y()), looks, 0, {pixels.data(), kWidth, kWidth, kHeight});
    return pixels;
  }

  // The place of a value on an axis by the definition alone; the end belongs to the last cell.
  static int CellOf(double part, int cells) {
    return part == 1 ? cells - 1 : static_cast<int>(std::floor(part * cells));
  }
  [[nodiscard]] int ColumnOf(std::int64_t i) const {
    const double time = static_cast<double>(i - 1) / trial.Rate;
    const Axis& axis = graph.Abscissa;
    return CellOf((time - axis.Minimum) / (axis.Maximum - axis.Minimum), kWidth);
  }
  [[nodiscard]] int RowOf(double value) const {
    const Axis& axis = graph.Ordinate;
    return CellOf((axis.Maximum - value) / (axis.Maximum - axis.Minimum), kHeight);
  }

  // Back to front, each column from its least to its greatest sample, the one before included.
  [[nodiscard]] Pixels PaintedPlainly() const {
    Pixels pixels(kWidth * kHeight, 0);
    for (int c = 1; c <= trial.NChan; ++c) {
      std::vector<Extremes> columns(kWidth);
      for (std::int64_t i = 1; i <= trial.NData; ++i) {
        const int k = ColumnOf(i);
        if (k < 0 || k >= kWidth) {
          continue;
        }
        Extremes& own = columns[static_cast<std::size_t>(k)];
        for (std::int64_t j = std::max<std::int64_t>(i - 1, 1); j <= i; ++j) {
          if (j == i || ColumnOf(j) >= 0) {
            own.min = std::min(own.min, trial.Data(j, c));
            own.max = std::max(own.max, trial.Data(j, c));
          }
        }
      }
      for (int k = 0; k < kWidth; ++k) {
        const Extremes& own = columns[static_cast<std::size_t>(k)];
        for (int row = std::max(RowOf(own.max), 0); row <= std::min(RowOf(own.min), kHeight - 1); ++row) {
          pixels[static_cast<std::size_t>(row * kWidth + k)] = static_cast<std::uint32_t>(c);
        }
      }
    }
    return pixels;
  }
};

TEST_F(TracesTest, EveryPeakIsPaintedWhateverTheZoom) {
  std::mt19937 random(11);
  auto channels = NoiseChannels(5, 20'000);
  for (auto& channel : channels) {
    for (float& x : channel) {
      x = random() % 500 == 0 ? 8 * x : x / 4;  // a single sample far from the rest
    }
  }
  channels[4].assign(20'000, 0.3F);
  Plot(channels, 1000.0);
  ASSERT_EQ(Painted(), PaintedPlainly());
  for (const auto& [left, right] : {std::pair(0.00037, 19.9), {1.2345, 9.8765}, {7.00013, 8.00029}}) {
    graph.Abscissa.SetMinMax(left, right);
    graph.Ordinate.SetMinMax(-3.33, 2.71);  // some peaks go beyond the edges
    Pixels painted = Painted();
    Pixels plain = PaintedPlainly();
    // Column 0 begins where the line enters, not at the sample before.
    for (int row = 0; row < kHeight; ++row) {
      painted[static_cast<std::size_t>(row * kWidth)] = plain[static_cast<std::size_t>(row * kWidth)] = 0;
    }
    ASSERT_EQ(painted, plain) << left;
  }
}

TEST_F(TracesTest, SamplesFarApartAreJoined) {
  Plot(NoiseChannels(1, 41), 100.0);
  for (std::int64_t i = 21; i <= 41; ++i) {
    trial.Data(i, 0) += 1.5F;  // a cut left a gap in the times
  }
  Replot();
  const TraceColumns columns(graph, X(), Y());
  for (int k = 0; k < kWidth; ++k) {
    ASSERT_FALSE(columns.At(k, 0).Empty()) << k;
    if (k > 0) {
      EXPECT_LE(columns.At(k, 0).top, columns.At(k - 1, 0).bottom + 1) << k;
      EXPECT_GE(columns.At(k, 0).bottom, columns.At(k - 1, 0).top - 1) << k;
    }
  }
  for (std::int64_t i = 1; i <= 41; ++i) {
    const RowSpan& span = columns.At(X().Cell(graph.Times().At(i)), 0);
    EXPECT_LE(span.top, RowOf(trial.Data(i, 1)) + 1);
    EXPECT_GE(span.bottom, RowOf(trial.Data(i, 1)) - 1);
  }
  // In the middle of the gap the line is half way.
  const double middle = (trial.Data(20, 0) + trial.Data(21, 0)) / 2;
  const double value = (trial.Data(20, 1) + trial.Data(21, 1)) / 2;
  EXPECT_NEAR(columns.At(X().Cell(middle), 0).top, RowOf(value), 1);
}

TEST_F(TracesTest, WhatIsNoNumberLeavesAGapAndTheLogarithmHidesWhatItHasNot) {
  std::vector<float> samples(1000, 10.0F);
  std::fill_n(samples.begin() + 400, 200, std::numeric_limits<float>::quiet_NaN());
  samples[100] = 1000.0F;
  samples[200] = -5.0F;
  Plot({samples}, 1000.0);
  graph.Ordinate.Log = true;
  graph.Ordinate.SetMinMax(1, 1000);
  const TraceColumns columns(graph, X(), Y());
  EXPECT_TRUE(columns.At(X().Cell(0.5), 0).Empty());
  EXPECT_EQ(columns.At(X().Cell(0.1), 0).top, 0);
  // log10(10) is a third of the way from 1 to 1000.
  EXPECT_NEAR(columns.At(X().Cell(0.3), 0).top, kHeight * 2 / 3, 1);
  EXPECT_GT(columns.At(X().Cell(0.2), 0).bottom, kHeight);  // down and out
}

TEST_F(TracesTest, WideAndDashedLinesKeepTheirPeaks) {
  std::vector<float> flat(3000, 0.0F);
  flat[1507] = 1.0F;
  Plot({flat}, 1000.0);
  graph.Ordinate.SetMinMax(-2, 2);
  looks[0].line = LineStyle::Dotted;
  const Pixels dotted = Painted();
  const auto at = [](const Pixels& pixels, int column, int row) {
    return pixels[static_cast<std::size_t>(row * kWidth + column)];
  };
  int painted = 0;
  for (int k = 0; k < kWidth; ++k) {
    painted += at(dotted, k, RowOf(0.0)) != 0 ? 1 : 0;
  }
  EXPECT_NEAR(painted, kWidth * 2 / 5, 3);  // two of five
  const int peak = ColumnOf(1508);
  for (int row = RowOf(1.0); row <= RowOf(0.0); ++row) {
    EXPECT_NE(at(dotted, peak, row), 0U) << row;
  }
  looks[0] = {.colour = 1, .width = 3};
  const Pixels wide = Painted();
  for (int k = peak - 1; k <= peak + 1; ++k) {
    EXPECT_NE(at(wide, k, RowOf(1.0) - 1), 0U);
  }
  EXPECT_EQ(at(wide, peak, RowOf(1.0) - 2), 0U);
}

// Wherever rounding puts the ends of an axis.
TEST_F(TracesTest, BothEndsOfAnAxisLieInThePicture) {
  Axis axis;
  for (int k = 1; k <= 500; ++k) {
    axis.SetMinMax(-0.1 * k / 7, 0.3 * k / 11);
    const PixelScale across = PixelScale::Across(axis, kWidth);
    const PixelScale up = PixelScale::Upward(axis, kHeight);
    EXPECT_EQ(across.Cell(axis.Minimum), 0) << k;
    EXPECT_EQ(across.Cell(axis.Maximum), kWidth - 1) << k;
    EXPECT_EQ(up.Cell(axis.Maximum), 0) << k;
    EXPECT_EQ(up.Cell(axis.Minimum), kHeight - 1) << k;
  }
}

TEST_F(TracesTest, TimesThatGoBackDrawACurve) {
  // A circle: each time twice. Its pixels lie on the circle, and each sample has its own.
  std::vector<float> y(721);
  for (std::size_t i = 0; i < y.size(); ++i) {
    y[i] = static_cast<float>(std::sin(static_cast<double>(i) * 3.14159265 / 360));
  }
  Plot({y}, 100.0);
  for (int i = 0; i <= 720; ++i) {
    trial.Data(i + 1, 0) = static_cast<float>(std::cos(i * 3.14159265 / 360));
  }
  Replot();
  ASSERT_FALSE(graph.Times().Sorted());
  graph.Abscissa.SetMinMax(-1.5, 1.5);
  graph.Ordinate.SetMinMax(-1.5, 1.5);
  Pixels pixels(kWidth * kHeight, 0);
  const PathStretch all{.channel = 1, .samples = {1, 722}, .look = looks[0]};
  PaintPaths(graph, {&all, 1}, X(), Y(), {pixels.data(), kWidth, kWidth, kHeight});
  for (std::int64_t i = 1; i <= 721; ++i) {
    const int cell = Y().Cell(trial.Data(i, 1)) * kWidth + X().Cell(trial.Data(i, 0));
    EXPECT_NE(pixels[static_cast<std::size_t>(cell)], 0U) << i;
  }
  for (int row = 0; row < kHeight; ++row) {
    for (int k = 0; k < kWidth; ++k) {
      if (pixels[static_cast<std::size_t>(row * kWidth + k)] != 0) {
        EXPECT_NEAR(std::hypot(X().Value(k + 0.5), Y().Value(row + 0.5)), 1.0, 0.03) << k << ' ' << row;
      }
    }
  }
}

// Paths of every kind, whole and zoomed into: what is passed over because it is hidden or outside is not
// missed. Held against every line painted in turn.
TEST_F(TracesTest, PathsAreThePixelsOfAllTheirLines) {
  std::mt19937 random(20);
  std::normal_distribution<float> noise;
  constexpr int kSamples = 4000;
  const auto expectEqual = [this](const std::vector<PathStretch>& stretches, const char* what) {
    Pixels plain(kWidth * kHeight, 0);
    PaintPathsPlainly(graph, stretches, X(), Y(), {plain.data(), kWidth, kWidth, kHeight});
    for (const std::size_t strips : {1U, 3U}) {
      Pixels fast(kWidth * kHeight, 0);
      PaintPaths(graph, stretches, X(), Y(), {fast.data(), kWidth, kWidth, kHeight}, strips);
      EXPECT_TRUE(fast == plain) << what << ' ' << strips;
    }
    return std::count_if(plain.begin(), plain.end(), [](auto pixel) { return pixel != 0; });
  };
  for (const char* kind : {"noise", "loops", "walk", "gaps"}) {
    std::vector<float> x(kSamples);
    std::vector<float> y(kSamples);
    for (std::size_t i = 0; i < x.size(); ++i) {
      const float turn = static_cast<float>(i) * 0.05F;
      const bool loops = kind[0] == 'l';
      x[i] = loops ? std::cos(turn) + 0.02F * noise(random) : noise(random);
      y[i] = loops ? std::sin(2 * turn) : noise(random);
      if (kind[0] == 'w' && i > 0) {
        x[i] = x[i - 1] + 0.02F * noise(random);
        y[i] = y[i - 1] + 0.02F * noise(random);
      }
      if (kind[0] == 'g' && i % 7 == 0) {
        y[i] = std::numeric_limits<float>::quiet_NaN();
      }
    }
    Plot({y, x, std::vector<float>(kSamples, 0.25F)}, 100.0);
    for (int i = 1; i <= kSamples; ++i) {
      trial.Data(i, 0) = x[static_cast<std::size_t>(i - 1)];
    }
    Replot();
    const Axis across = graph.Abscissa;
    const Axis up = graph.Ordinate;
    for (const auto& [wide, high] :
         {std::pair(1.0, 1.0), {0.3, 1.0}, {0.01, 1.0}, {1.0, 0.05}, {0.1, 0.02}}) {
      graph.Abscissa.SetMinMax(across.Minimum * wide, across.Maximum * wide);
      graph.Ordinate.SetMinMax(up.Minimum * high, up.Maximum * high);
      std::vector<PathStretch> stretches;
      for (int k = 0; k < 5; ++k) {  // five colours, then a wide one in front of and behind others
        stretches.push_back({1, {1 + k * 800, 802 + k * 800}, {.colour = 7U + static_cast<unsigned>(k)}});
      }
      stretches.push_back({1, {900, 1300}, {.colour = 30, .width = 4}});
      stretches.push_back({2, {1, kSamples + 1}, {.colour = 31, .width = 2}});
      stretches.push_back({3, {1, kSamples + 1}, {.colour = 32, .width = 1}});
      for (PathStretch& stretch : stretches) {
        stretch.samples.end = std::min<std::int64_t>(stretch.samples.end, kSamples + 1);
      }
      const std::ptrdiff_t painted = expectEqual(stretches, kind);
      EXPECT_TRUE(painted > 20 || wide * high < 1) << kind;
    }
  }
}

}  // namespace
}  // namespace velmora::test
