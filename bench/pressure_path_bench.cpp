// The path of the centre of pressure of 1,000,000 samples over its plate, drawn at 1600 x 900 without a
// display: the first picture with everything before it, and a redraw of it.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>

#include "bench_support.hpp"
#include "core/questions/form.hpp"
#include "forceplate/pressure_path_form.hpp"
#include "graph/drawn_form_graph.hpp"
#include "plot/graph_widget.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kSamples = 1'000'000;

// A person who sways about the middle of a reduced plate; the noise in micrometres.
void Sway(Workbench& workbench, std::int64_t micrometres) {
  Trial& trial = workbench.trial;
  trial.Rate = 1000;
  trial.AllocateData(6, kSamples);
  trial.RebuildTimeColumn();
  std::uint32_t random = 1;
  for (std::int32_t i = 1; i <= kSamples; ++i) {
    random = random * 1664525U + 1013904223U;
    const double noise =
        (static_cast<double>(random >> 8) / 0x1p24 - 0.5) * 1e-4 * static_cast<double>(micrometres);
    float* frame = trial.matrix.Frame(i);
    frame[3] = 700.0F;
    frame[4] = static_cast<float>(2 * std::sin(i * 3.1e-4) + std::sin(i * 1.7e-3) + noise);
    frame[5] = static_cast<float>(3 * std::cos(i * 2.3e-4) + std::sin(i * 1.1e-3) - noise);
  }
  trial.ForcesReduced = true;
  trial.NPlates = 1;
  trial.CursorLo = 1;
  trial.CursorHi = kSamples;
  workbench.plates.PlateTable[0] = {.PlateType = 5, .Width = 460, .Length = 510, .optDistance = 1};
}

/// Draws the form's picture, so many times.
class Onlooker : public SaveTo {
 public:
  Onlooker() : SaveTo("") {}
  std::string AskForm(Form& form) override {
    look(form);
    return "Exit";
  }
  std::function<void(Form& form)> look;
};

struct Picture {
  explicit Picture(const Form& form) : drawn(*form.Graph()) {
    plot.resize(1600, 900);
    plot.SetGraph(&drawn.Drawing());
    plot.show();
    Draw();
  }
  void Draw() {
    plot.Arrange();
    plot.replot(QCustomPlot::rpImmediateRefresh);
  }

  DrawnFormGraph drawn;
  GraphWidget plot;
};

void FirstPicture(benchmark::State& state) {
  Onlooker person;
  Workbench workbench(person);
  Sway(workbench, state.range(0));
  person.look = [](Form& form) { benchmark::DoNotOptimize(Picture(form)); };
  for (auto _ : state) {
    ShowPressurePath(workbench);
  }
}

void Redraw(benchmark::State& state) {
  Onlooker person;
  Workbench workbench(person);
  Sway(workbench, state.range(0));
  person.look = [&state](Form& form) {
    Picture picture(form);
    for (auto _ : state) {
      picture.Draw();
    }
  };
  ShowPressurePath(workbench);
}

BENCHMARK(FirstPicture)->ArgName("noise")->Arg(0)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(Redraw)->ArgName("noise")->Arg(0)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
