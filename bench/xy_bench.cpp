// The X-Y plot of a million points as a person sees it, drawn and painted at 1600 x 900 without a display:
// the first picture from the trial on, pans and zooms; and the pixels of its lines against every line in
// turn. Points: loops of a slow walk, or noise that fills the plane, in which every line goes through half of
// it.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>
#include <memory>
#include <random>

#include "bench_support.hpp"
#include "graph/xy/xy_view.hpp"
#include "plot/graph_widget.hpp"
#include "plot/traces/path_parts.hpp"
#include "plot/traces/path_raster.hpp"

namespace velmora {
namespace {

constexpr int kPoints = 1'000'000;
enum Points { kLoops, kNoise };

// Channels 1 and 2 of eight.
Workbench& WorkbenchOf(std::int64_t points) {
  static SaveTo questions("");
  static Workbench workbench(questions);
  static std::int64_t made = -1;
  if (made == points) {
    return workbench;
  }
  Trial& trial = workbench.trial;
  made = points;
  constexpr double kRate = 1000.0;
  trial.Rate = kRate;
  trial.AllocateData(8, kPoints);
  trial.RebuildTimeColumn();
  std::mt19937 random(1);
  std::normal_distribution<float> noise;
  for (int i = 1; i <= kPoints; ++i) {
    const float turn = static_cast<float>(i) * 0.005F;
    float* frame = trial.matrix.Frame(i);
    frame[1] = points == kNoise ? noise(random) : std::cos(turn) + 0.03F * std::sin(turn / 50);
    frame[2] = points == kNoise ? noise(random) : std::sin(2 * turn) + 0.1F * std::cos(turn / 70);
  }
  return workbench;
}

struct Screen {
  XYView view;
  Graph& graph = view.Lead();
  GraphWidget widget;
  Axis x = graph.Abscissa;
  Axis y = graph.Ordinate;

  static XYSetup Setup(bool byTime) {
    XYSetup setup{.X = 1, .ColourByTime = byTime};
    setup.Y[2] = true;
    return setup;
  }
  Screen(Workbench& workbench, bool byTime) : view(workbench, Setup(byTime)) {
    widget.resize(1600, 900);
    widget.SetGraph(&graph);
    widget.show();
    Frame();
  }
  void Show(double factor, double at) {
    const auto part = [&](Axis& axis, const Axis& whole) {
      const double width = (whole.Maximum - whole.Minimum) * factor;
      const double low = whole.Minimum + (whole.Maximum - whole.Minimum - width) * at;
      axis.SetMinMax(low, low + width);
    };
    part(graph.Abscissa, x);
    part(graph.Ordinate, y);
    Frame();
  }
  void Frame() {
    widget.Arrange();
    widget.replot(QCustomPlot::rpImmediateRefresh);
  }
};

void FirstPicture(benchmark::State& state) {
  Workbench& workbench = WorkbenchOf(state.range(0));
  for (auto _ : state) {
    auto screen = std::make_unique<Screen>(workbench, state.range(1) != 0);
    state.PauseTiming();
    screen.reset();
    state.ResumeTiming();
  }
}

void Zoom(benchmark::State& state) {
  Screen screen(WorkbenchOf(state.range(0)), state.range(1) != 0);
  double factor = 1.0;
  for (auto _ : state) {
    factor = factor < 1e-3 ? 1.0 : factor / 1.25;
    screen.Show(factor, 0.4);
  }
}

// All of it, then a half and a tenth.
void Pan(benchmark::State& state) {
  Screen screen(WorkbenchOf(state.range(0)), state.range(1) != 0);
  double at = 0.0;
  for (auto _ : state) {
    at = at > 0.95 ? 0.0 : at + 0.01;
    screen.Show(1.0 / static_cast<double>(state.range(2)), at);
  }
}

// The lines alone, all in view; fast or one by one. A run in which the two differ fails.
void Lines(benchmark::State& state) {
  Screen screen(WorkbenchOf(state.range(0)), state.range(1) != 0);
  const PixelScale x = PixelScale::Across(screen.graph.Abscissa, 1500);
  const PixelScale y = PixelScale::Upward(screen.graph.Ordinate, 800);
  std::vector<PathStretch> stretches;
  for (const PathPart& part : PathParts(screen.graph, kBlack)) {
    stretches.push_back({1, part.samples, TraceLook{.colour = part.colour.rgba()}});
  }
  std::vector<std::uint32_t> pixels;
  const auto paint = [&](bool plainly) {
    pixels.assign(1500UL * 800UL, 0);
    const PixelArea area{pixels.data(), 1500, 1500, 800};
    plainly ? PaintPathsPlainly(screen.graph, stretches, x, y, area)
            : PaintPaths(screen.graph, stretches, x, y, area);
  };
  paint(true);
  const std::vector<std::uint32_t> plain = pixels;
  for (auto _ : state) {
    paint(state.range(2) != 0);
    benchmark::DoNotOptimize(pixels.data());
  }
  if (pixels != plain) {
    state.SkipWithError("the pixels differ");
  }
}

void Kinds(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"noise", "time"})->Unit(benchmark::kMillisecond);
  bench->ArgsProduct({{kLoops, kNoise}, {0, 1}});
}

void KindsAndMore(benchmark::internal::Benchmark* bench, const char* name, std::vector<std::int64_t> more) {
  bench->ArgNames({"noise", "time", name})->Unit(benchmark::kMillisecond);
  bench->ArgsProduct({{kLoops, kNoise}, {0, 1}, std::move(more)});
}

BENCHMARK(FirstPicture)->Apply(Kinds);
BENCHMARK(Zoom)->Apply(Kinds);
BENCHMARK(Pan)->Apply([](auto* bench) { KindsAndMore(bench, "part", {1, 2, 10}); });
BENCHMARK(Lines)->Apply([](auto* bench) { KindsAndMore(bench, "plain", {0, 1}); });

}  // namespace
}  // namespace velmora
