// Frames of the multi-axis graph as a person sees them, one channel a lane, drawn and painted at 1600 x 900
// without a display: the first picture with everything before it, then a pan, a zoom, and what is drawn anew
// while a cursor or a threshold line is dragged; and such a step in the window, whose sidebar follows it. On
// the screen lanes have a least height, so some of 64 are scrolled to; "whole" draws all of them, as a
// picture does.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <memory>

#include "bench_support.hpp"
#include "graph/multi/multi_view.hpp"
#include "graph_trials.hpp"
#include "plot/stack_widget.hpp"
#include "ui/graph/multi_window.hpp"

namespace velmora {
namespace {

struct Screen {
  std::vector<Graph> graphs;
  StackWidget widget;

  Screen(const Trial& trial, bool whole) : graphs(static_cast<std::size_t>(trial.NChan)) {
    widget.resize(1600, 900);
    widget.SetWhole(whole);
    graphs.front().PlotXY(trial);
    std::vector<Lane> lanes;
    for (int c = 1; c <= trial.NChan; ++c) {
      Graph& graph = graphs[static_cast<std::size_t>(c - 1)];
      graph.PlotAs(graphs.front());
      ChannelFlags only{};
      only[c] = true;
      graph.Show(only);
      graph.AutoScaleAbscissa();
      const Extremes all = graph.Envelope().Whole(c);
      graph.Ordinate.SetMinMax(all.min, all.max);
      graph.Cursors.resize(3);
      graph.Cursors[1].XPosition = graph.Abscissa.Maximum / 2;
      graph.Cursors[2].Kind = CursorKind::Threshold;
      lanes.push_back({c, &graph});
    }
    widget.SetLanes(lanes);
    widget.show();
    Frame();
  }
  void Frame() {
    widget.Arrange();
    widget.replot(QCustomPlot::rpImmediateRefresh);
  }
  void ShowStretch(double from, double to) {
    for (Graph& graph : graphs) {
      graph.Abscissa.SetMinMax(from, to);
    }
    Frame();
  }
};

const Trial& TrialFor(const benchmark::State& state) {
  return TrialOf({static_cast<int>(state.range(0)), state.range(1), true});
}

void FirstPicture(benchmark::State& state) {
  const Trial& trial = TrialFor(state);
  for (auto _ : state) {
    auto screen = std::make_unique<Screen>(trial, state.range(2) != 0);
    state.PauseTiming();
    screen.reset();
    state.ResumeTiming();
  }
}

// A tenth of the trial, moved on.
void Pan(benchmark::State& state) {
  Screen screen(TrialFor(state), state.range(2) != 0);
  const double window = screen.graphs.front().Abscissa.Maximum / 10;
  double at = 0.0;
  for (auto _ : state) {
    at = at > window ? 0.0 : at + window / 97;
    screen.ShowStretch(at, at + window);
  }
}

void Zoom(benchmark::State& state) {
  Screen screen(TrialFor(state), state.range(2) != 0);
  const double whole = screen.graphs.front().Abscissa.Maximum;
  double width = whole;
  for (auto _ : state) {
    width = width < whole / 50'000 ? whole : width / 1.25;
    screen.ShowStretch(whole / 2 - width / 2, whole / 2 + width / 2);
  }
}

void DragCursor(benchmark::State& state) {
  Screen screen(TrialFor(state), state.range(2) != 0);
  for (auto _ : state) {
    for (Graph& graph : screen.graphs) {
      graph.Cursors[0].XPosition += graph.Abscissa.Maximum / 5000;
    }
    screen.widget.RedrawCursors();
    screen.widget.repaint();
  }
}

void DragThreshold(benchmark::State& state) {
  Screen screen(TrialFor(state), state.range(2) != 0);
  for (auto _ : state) {
    screen.graphs.front().Cursors[2].YPosition += 1e-4;
    screen.widget.RedrawCursors();
    screen.widget.repaint();
  }
}

// A dragged cursor of two, from the plot's signal to the sidebar on the screen; with events a line a channel
// more.
void DragCursorInWindow(benchmark::State& state) {
  SaveTo questions("");
  Workbench workbench(questions);
  Trial& made = TrialOf({static_cast<int>(state.range(0)), state.range(1), true});
  std::swap(workbench.trial, made);
  for (std::int16_t c = 1; c <= workbench.trial.NChan; ++c) {
    workbench.graph.GraphOfChannel[c] = c;
  }
  workbench.graph.NGraphs = workbench.trial.NChan;
  workbench.view = std::make_unique<MultiView>(workbench);
  MultiView& view = OpenMultiView(workbench);
  view.Select(1);
  view.PressKey({.name = "2"});
  workbench.events.EventTracking = state.range(2) != 0;
  workbench.events.CurrentEvent = state.range(2) != 0 ? 1 : 0;
  workbench.events.ChannelEvents.resize(1);
  auto window = std::make_unique<ui::MultiWindow>(workbench, [](const Command& /*command*/) {});
  window->resize(1800, 900);
  window->show();
  QApplication::processEvents();
  const double end = view.GraphAt(1).Abscissa.Maximum;
  double at = 0.0;
  for (auto _ : state) {
    at = at > end / 2 ? 0.0 : at + end / 5000;
    Q_EMIT window->Plot().cursorDragged(1, 1, at);
    QApplication::processEvents();
  }
  window.reset();
  workbench.view.reset();
  std::swap(workbench.trial, made);
}

void EachShape(benchmark::internal::Benchmark* bench) {
  constexpr std::int64_t kMillion = 1'000'000;
  bench->ArgNames({"channels", "samples", "whole"})->Unit(benchmark::kMillisecond);
  bench->Args({64, kMillion, 0})->Args({64, kMillion, 1})->Args({8, kMillion, 0});
}

BENCHMARK(FirstPicture)->Apply(EachShape);
BENCHMARK(Pan)->Apply(EachShape);
BENCHMARK(Zoom)->Apply(EachShape);
BENCHMARK(DragCursor)->Apply(EachShape);
BENCHMARK(DragThreshold)->Apply(EachShape);
BENCHMARK(DragCursorInWindow)
    ->ArgNames({"channels", "samples", "events"})
    ->Args({64, 1'000'000, 0})
    ->Args({64, 1'000'000, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
