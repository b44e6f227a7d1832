// Frames of the graph as a person sees them, drawn and painted at 1600 x 900 without a display: the
// first picture of a trial (with everything that comes before it), then a pan, a zoom, a change of scale
// and a step of a cursor. Channels lie in lanes of their own ("stacked") or each fills the whole axis.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <memory>

#include "graph_trials.hpp"
#include "plot/graph_widget.hpp"

namespace velmora {
namespace {

void ShowAll(Graph& graph) {
  for (Plot& plot : graph.Plots) {
    plot.Visible = true;
    plot.ColourIndex = (plot.Channel - 1) % kColours + 1;
    plot.LineColor = ColourTable[static_cast<std::size_t>(plot.ColourIndex)];
  }
  graph.AutoScaleAbscissa();
  graph.AutoScaleOrdinate();
  graph.Title = "64 channels";
}

struct Screen {
  Graph graph;
  GraphWidget widget;

  explicit Screen(const Trial& trial) {
    widget.resize(1600, 900);
    widget.SetLegend(false);
    graph.PlotXY(trial);
    ShowAll(graph);
    widget.SetGraph(&graph);
    widget.show();
    Frame();
  }
  void Frame() {
    widget.Arrange();
    widget.replot(QCustomPlot::rpImmediateRefresh);
  }
};

Shape ShapeOf(const benchmark::State& state) {
  return {static_cast<int>(state.range(0)), state.range(1), state.range(2) != 0};
}

void FirstPicture(benchmark::State& state) {
  const Trial& trial = TrialOf(ShapeOf(state));
  for (auto _ : state) {
    auto screen = std::make_unique<Screen>(trial);
    state.PauseTiming();
    state.counters["pyramid/matrix"] =
        static_cast<double>(screen->graph.Envelope().Bytes()) /
        static_cast<double>(trial.matrix.Samples() * trial.matrix.Stride() * 4);
    screen.reset();
    state.ResumeTiming();
  }
}

// The whole trial, then ever shorter pieces of it: 1, 1/10, ... 1/100,000.
void Pan(benchmark::State& state) {
  Screen screen(TrialOf(ShapeOf(state)));
  const double window = screen.graph.Abscissa.Maximum / static_cast<double>(state.range(3));
  double at = 0.0;
  for (auto _ : state) {
    at = at > window ? 0.0 : at + window / 97;
    screen.graph.Abscissa.SetMinMax(at, at + window);
    screen.Frame();
  }
}

void Zoom(benchmark::State& state) {
  Screen screen(TrialOf(ShapeOf(state)));
  const double whole = screen.graph.Abscissa.Maximum;
  double width = whole;
  for (auto _ : state) {
    width = width < whole / 50'000 ? whole : width / 1.25;
    screen.graph.Abscissa.SetMinMax(whole / 2 - width / 2, whole / 2 + width / 2);
    screen.Frame();
  }
}

void ChangeScale(benchmark::State& state) {
  Screen screen(TrialOf(ShapeOf(state)));
  const Axis all = screen.graph.Ordinate;
  double factor = 1.0;
  for (auto _ : state) {
    factor = factor > 3 ? 0.5 : factor * 1.1;
    screen.graph.Ordinate.SetMinMax(all.Minimum * factor, all.Maximum * factor);
    screen.Frame();
  }
}

void StepCursor(benchmark::State& state) {
  Screen screen(TrialOf(ShapeOf(state)));
  screen.graph.Cursors.resize(2);
  screen.graph.Cursors[1].XPosition = screen.graph.Abscissa.Maximum / 2;
  for (auto _ : state) {
    screen.graph.Cursors[0].XPosition += screen.graph.Abscissa.Maximum / 5000;
    screen.widget.RedrawCursors();
    screen.widget.repaint();
  }
}

constexpr std::int64_t kMillion = 1'000'000;

void EachShape(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"channels", "samples", "stacked"})->Unit(benchmark::kMillisecond);
  bench->Args({64, kMillion, 1})
      ->Args({64, kMillion, 0})
      ->Args({8, 10 * kMillion, 1})
      ->Args({8, 10 * kMillion, 0})
      ->Args({4, 1000, 0});  // smooth lines
}

void EachWindow(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"channels", "samples", "stacked", "part"})->Unit(benchmark::kMillisecond);
  for (const auto& [channels, samples] : {std::pair(64, kMillion), std::pair(8, 10 * kMillion)}) {
    for (const int stacked : {1, 0}) {
      for (const std::int64_t part : {1, 10, 100, 1000, 10'000}) {
        bench->Args({channels, samples, stacked, part});
      }
    }
  }
}

BENCHMARK(FirstPicture)->Apply(EachShape);
BENCHMARK(Pan)->Apply(EachWindow);
BENCHMARK(Zoom)->Apply(EachShape);
BENCHMARK(ChangeScale)->Apply(EachShape);
BENCHMARK(StepCursor)->Apply(EachShape);

}  // namespace
}  // namespace velmora
