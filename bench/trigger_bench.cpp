// Triggering: the scan of 10,000,000 samples of a channel against a plain read of it, and what one step of a
// dragged level takes at 1,000,000 samples, from the mouse to the marks on the screen (1600 x 900, without a
// display).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>

#include "bench_support.hpp"
#include "graph/single_view.hpp"
#include "plot/graph_widget.hpp"
#include "trigger/trigger_form.hpp"
#include "trigger/trigger_scan.hpp"

namespace velmora {
namespace {

// Strides of a second and noise; one trial at a time.
Trial& TrialOf(int channels, std::int32_t samples) {
  static Trial trial;
  if (trial.NChan == channels && trial.NData == samples) {
    return trial;
  }
  trial.Rate = 1000;
  trial.AllocateData(channels, samples);
  trial.RebuildTimeColumn();
  trial.Duration = (samples - 1) / trial.Rate;
  std::uint32_t random = 1;
  for (std::int32_t i = 1; i <= samples; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (int c = 1; c <= channels; ++c) {
      random = random * 1664525U + 1013904223U;
      const double phase = 6.283185307179586 * (i % 1000) / 1000;
      frame[c] = static_cast<float>(400 * std::max(0.0, std::sin(phase))) + static_cast<float>(random >> 28);
    }
  }
  return trial;
}

constexpr std::int32_t kLong = 10'000'000;

Trial& LongTrial(const benchmark::State& state) {
  return TrialOf(static_cast<int>(state.range(0)), kLong);
}

void ReadChannel(benchmark::State& state) {
  Trial& trial = LongTrial(state);
  const ChannelView channel = trial.Channel(1);
  for (auto _ : state) {
    double sum = 0;
    for (std::int64_t i = 0; i < channel.size(); ++i) {
      sum += channel[i];
    }
    benchmark::DoNotOptimize(sum);
  }
}

template <auto scan>
void Scan(benchmark::State& state) {
  const Trial& trial = LongTrial(state);
  const TriggerCondition condition{static_cast<TriggerKind>(state.range(1)), 100, 50};
  std::size_t found = 0;
  for (auto _ : state) {
    found = scan(trial.matrix, 1, condition, {1, trial.NData}, 32'767).size();
    benchmark::DoNotOptimize(found);
  }
  state.counters["found"] = static_cast<double>(found);
}

/// Presses "Exit" at once, after the level was dragged over and over.
class Dragger : public SaveTo {
 public:
  Dragger(benchmark::State& state, GraphWidget& plot) : SaveTo(""), state_(state), plot_(plot) {}

  std::string AskForm(Form& form) override {
    auto& view = OpenSingleView(*workbench);
    view.onRedraw = [this](SingleView::Redraw /*what*/) {
      plot_.Arrange();
      plot_.layer("overlay")->replot();
    };
    form.Edit(*form.FindField("comType"), std::to_string(state_.range(0)));
    double y = 20;
    for (auto _ : state_) {
      y = y > 380 ? 20 : y + 7;
      view.onLevel(1, y);
    }
    state_.counters["found"] = static_cast<double>(view.Drawing().Preview->Hits.size());
    view.onRedraw = nullptr;
    return "Exit";
  }

  Workbench* workbench = nullptr;

 private:
  benchmark::State& state_;
  GraphWidget& plot_;
};

void DragLevel(benchmark::State& state) {
  GraphWidget plot;
  Dragger questions(state, plot);
  Workbench workbench(questions);
  questions.workbench = &workbench;
  std::swap(workbench.trial, TrialOf(8, 1'000'000));
  workbench.chooser.ChanSelected[1] = true;
  auto view = std::make_unique<SingleView>(workbench);
  SingleView& shown = *view;
  workbench.view = std::move(view);
  plot.resize(1600, 900);
  plot.SetGraph(&shown.Drawing());
  plot.show();
  plot.Arrange();
  plot.replot(QCustomPlot::rpImmediateRefresh);
  shown.onRedraw = [](SingleView::Redraw /*what*/) {};
  TriggerForm(workbench, shown).Show(workbench);
}

void EachKind(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"channels", "kind"})->Unit(benchmark::kMillisecond);
  for (const int channels : {1, 8, 64}) {
    for (const int kind : {0, 2, 4, 7}) {
      if (channels < 64 || kind == 0) {
        bench->Args({channels, kind});
      }
    }
  }
}

BENCHMARK(ReadChannel)->ArgName("channels")->Arg(1)->Arg(8)->Arg(64)->Unit(benchmark::kMillisecond);
BENCHMARK(Scan<ScanForTriggers>)->Name("ScanFast")->Apply(EachKind);
BENCHMARK(Scan<ScanPlain>)->Name("ScanPlain")->Apply(EachKind);
BENCHMARK(DragLevel)->ArgName("kind")->Arg(0)->Arg(2)->Arg(4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
