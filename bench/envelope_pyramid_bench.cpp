// The pyramid of 64 channels x 1,000,000 samples: building it against one read of the matrix, and the
// columns of a frame 1600 pixels wide against looking at every sample.
#include <benchmark/benchmark.h>

#include "core/trial/trial.hpp"
#include "graph/envelope_pyramid.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 1'000'000;
constexpr int kColumns = 1600;

SampleMatrix& Matrix() {
  static Trial trial = [] {
    Trial made;
    made.AllocateData(kChannels, kSamples);
    float* x = made.matrix.Frame(1);
    for (std::int64_t k = 0; k < made.matrix.Stride() * kSamples; ++k) {
      x[k] = static_cast<float>(k * 7919 % 20011) / 1000.0F;
    }
    return made;
  }();
  return trial.matrix;
}

const EnvelopePyramid& Pyramid() {
  static const EnvelopePyramid pyramid = [] {
    EnvelopePyramid made;
    made.Build(Matrix());
    return made;
  }();
  return pyramid;
}

void ReadOfTheMatrix(benchmark::State& state) {
  const SampleMatrix& matrix = Matrix();
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadMatrix(matrix, kSamples));
  }
}
BENCHMARK(ReadOfTheMatrix)->Unit(benchmark::kMillisecond);

void Build(benchmark::State& state) {
  const auto level = static_cast<SimdLevel>(state.range(0));
  if (level > MachineSimdLevel()) {
    state.SkipWithError("this machine has narrower vectors");
    return;
  }
  for (auto _ : state) {
    EnvelopePyramid pyramid;
    pyramid.Build(Matrix(), level);
    benchmark::DoNotOptimize(pyramid);
  }
}
BENCHMARK(Build)->DenseRange(0, 2)->ArgName("simd")->Unit(benchmark::kMillisecond);

void ColumnsOfAll(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(Pyramid().Columns(1, state.range(0), kColumns));
  }
}
BENCHMARK(ColumnsOfAll)->Arg(kSamples)->Arg(kSamples / 10)->Arg(10000)->Unit(benchmark::kMillisecond);

void ColumnsChannelByChannel(benchmark::State& state) {
  for (auto _ : state) {
    for (int c = 1; c <= kChannels; ++c) {
      benchmark::DoNotOptimize(Pyramid().Columns(c, 1, kSamples, kColumns));
    }
  }
}
BENCHMARK(ColumnsChannelByChannel)->Unit(benchmark::kMillisecond);

void ColumnsByEverySample(benchmark::State& state) {
  const SampleMatrix& matrix = Matrix();
  for (auto _ : state) {
    std::vector<Extremes> columns(static_cast<std::size_t>(kColumns * (kChannels + 1)));
    for (std::int64_t i = 0; i < kSamples; ++i) {
      const float* frame = matrix.Frame(i + 1);
      Extremes* column = columns.data() + i * kColumns / kSamples * (kChannels + 1);
      for (int c = 0; c <= kChannels; ++c) {
        column[c].min = frame[c] < column[c].min ? frame[c] : column[c].min;
        column[c].max = frame[c] > column[c].max ? frame[c] : column[c].max;
      }
    }
    benchmark::DoNotOptimize(columns);
  }
}
BENCHMARK(ColumnsByEverySample)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
