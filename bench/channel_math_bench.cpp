// Point-wise operations on all 64 channels of 1,000,000 samples, against one pass in place over the
// same matrix.
#include <benchmark/benchmark.h>

#include "bench_support.hpp"
#include "dsp/math/channel_math.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 1'000'000;

Trial& SharedTrial() {
  static Trial trial = [] {
    Trial made;
    made.Rate = 1000.0;
    made.AllocateData(kChannels, kSamples);
    return made;
  }();
  return trial;
}

void Refill(Trial& trial) {
  float* x = trial.matrix.Frame(1);
  const std::int64_t count = trial.matrix.Stride() * kSamples;
  for (std::int64_t k = 0; k < count; ++k) {
    x[k] = static_cast<float>(k % 2001 - 1000) / 500.0F;
  }
}

void PassInPlace(benchmark::State& state) {
  Trial& trial = SharedTrial();
  Refill(trial);
  for (auto _ : state) {
    NegateInPlace(trial.matrix, kSamples);
    benchmark::ClobberMemory();
  }
}

template <typename Operation>
void Run(benchmark::State& state, const Operation& operation) {
  Trial& trial = SharedTrial();
  const ChannelList all = ChannelsTo(kChannels);
  for (auto _ : state) {
    state.PauseTiming();
    Refill(trial);
    state.ResumeTiming();
    operation(trial, all);
    benchmark::ClobberMemory();
  }
}

PerChannel<float> Constants(float value) {
  PerChannel<float> constants;
  constants.fill(value);
  return constants;
}

BENCHMARK(PassInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, absolute, Absolute)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, negate, Negate)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, half_wave, HalfWaveRectify)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, square, Square)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, square_root, SquareRoot)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, invert, Invert)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, add, [](Trial& t, const ChannelList& c) {
  AddConstants(t, c, Constants(0.5F));
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, multiply, [](Trial& t, const ChannelList& c) {
  MultiplyBy(t, c, Constants(0.5F));
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, normalize, [](Trial& t, const ChannelList& c) {
  DivideBy(t, c, Constants(3.0F));
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, cumulative, Accumulate)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, integrate, [](Trial& t, const ChannelList& c) {
  IntegrateOverTime(t, c, 0.001);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Run, differentiate, [](Trial& t, const ChannelList& c) {
  Differentiate(t, c, 0.001);
})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
