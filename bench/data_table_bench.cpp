// The table of a trial's numbers at 1600 x 900 without a display: 64 channels x 10,000,000 samples opened and
// scrolled, and what memory it takes beside the samples. Held against Qt's own table on the same samples.
#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <memory>

#include "bench_support.hpp"
#include "data/sample_cell.hpp"
#include "ui/data/data_window.hpp"
#include "ui/data/sample_grid.hpp"
#include "ui/text.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 10'000'000;
constexpr QSize kScreen{1600, 900};

const Workbench& Loaded() {
  static SaveTo nobody{""};
  static Workbench workbench(nobody);
  Trial& trial = workbench.trial;
  if (trial.NData == 0) {
    trial.Rate = 1000.0;
    trial.AllocateData(kChannels, kSamples, SampleMatrix::Fill::None);
    for (std::int64_t i = 1; i <= kSamples; ++i) {
      float* frame = trial.matrix.Frame(i);
      for (int c = 0; c <= kChannels; ++c) {
        frame[c] = static_cast<float>((i * 37 + c) % 20'000) / 1000.0F - 10.0F;
      }
    }
    trial.RebuildTimeColumn();
  }
  return workbench;
}

struct Ours {
  ui::DataWindow window{Loaded(), {}, nullptr};

  Ours() {
    window.resize(kScreen);
    window.show();
    QApplication::processEvents();  // nothing is painted before the window is on its screen
    Paint();
  }
  void Paint() { window.Grid().viewport()->repaint(); }
  QScrollBar& Bar() { return *window.Grid().verticalScrollBar(); }
};

class SampleModel : public QAbstractTableModel {
 public:
  [[nodiscard]] int rowCount(const QModelIndex& /*parent*/) const override { return kSamples; }
  [[nodiscard]] int columnCount(const QModelIndex& /*parent*/) const override { return kChannels + 1; }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? QVariant(ui::ToQt(ShownSample(
                                         Loaded().trial.Data(index.row() + 1, index.column()), "0.0000")))
                                   : QVariant();
  }
};

struct OfQt {
  SampleModel model;
  QTableView window;

  OfQt() {
    window.setModel(&model);
    window.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    window.resize(kScreen);
    window.show();
    QApplication::processEvents();  // nothing is painted before the window is on its screen
    Paint();
  }
  void Paint() { window.viewport()->repaint(); }
  QScrollBar& Bar() { return *window.verticalScrollBar(); }
};

template <typename Table>
void Open(benchmark::State& state) {
  Loaded();
  ResetPeakMemory();
  const double before = PeakMemory();
  for (auto _ : state) {
    auto table = std::make_unique<Table>();
    state.PauseTiming();
    table.reset();
    state.ResumeTiming();
  }
  state.counters["MiB_beside"] = PeakMemory() - before;
}

/// A page, a hundredth of the trial, or from end to end at a step.
template <typename Table>
void Scroll(benchmark::State& state) {
  Table table;
  const auto step = state.range(0) == 0 ? std::int64_t{table.Bar().pageStep()} : state.range(0);
  std::int64_t at = 0;
  for (auto _ : state) {
    at = (at + step) % table.Bar().maximum();
    table.Bar().setValue(static_cast<int>(at));
    table.Paint();
  }
}

void Steps(benchmark::internal::Benchmark* bench) {
  bench->ArgName("rows")
      ->Arg(3)
      ->Arg(0)
      ->Arg(kSamples / 100)
      ->Arg(kSamples - 1)
      ->Unit(benchmark::kMillisecond);
}

BENCHMARK(Open<Ours>)->Unit(benchmark::kMillisecond);
BENCHMARK(Open<OfQt>)->Unit(benchmark::kMillisecond);
BENCHMARK(Scroll<Ours>)->Apply(Steps);
BENCHMARK(Scroll<OfQt>)->Apply(Steps);

}  // namespace
}  // namespace velmora
