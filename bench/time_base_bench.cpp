// Moving 64 channels of 1,000,000 samples along the abscissa, against copying the same matrix.
#include <benchmark/benchmark.h>

#include <cstring>

#include "bench_support.hpp"
#include "dsp/time_base/time_base.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 1'000'000;
constexpr std::int32_t kShift = 12'345;

Trial& SharedTrial() {
  static Trial trial = [] {
    Trial made;
    made.Rate = 1000.0;
    made.AllocateData(kChannels, kSamples);
    float* x = made.matrix.Frame(1);
    for (std::int64_t k = 0; k < made.matrix.Stride() * kSamples; ++k) {
      x[k] = static_cast<float>(k % 2001 - 1000) / 500.0F;
    }
    return made;
  }();
  return trial;
}

void CopyMatrix(benchmark::State& state) {
  Trial& trial = SharedTrial();
  static SampleMatrix copy = [] {
    SampleMatrix made;
    made.Allocate(kChannels, kSamples);
    return made;
  }();
  const auto bytes = static_cast<std::size_t>(trial.matrix.Stride() * kSamples) * sizeof(float);
  std::memcpy(copy.Frame(1), trial.matrix.Frame(1), bytes);  // warm
  for (auto _ : state) {
    std::memcpy(copy.Frame(1), trial.matrix.Frame(1), bytes);
    benchmark::ClobberMemory();
  }
}

void Reverse(benchmark::State& state) {
  for (auto _ : state) {
    ReverseSamples(SharedTrial());
  }
}

void Shift(benchmark::State& state) {
  for (auto _ : state) {
    ShiftSamples(SharedTrial(), ChannelsTo(kChannels), kShift);
  }
}

void ShiftBack(benchmark::State& state) {
  for (auto _ : state) {
    ShiftSamples(SharedTrial(), ChannelsTo(kChannels), -kShift);
  }
}

void Rotate(benchmark::State& state) {
  for (auto _ : state) {
    RotateSamples(SharedTrial(), ChannelsTo(kChannels), kShift);
  }
}

BENCHMARK(CopyMatrix)->Unit(benchmark::kMillisecond);
BENCHMARK(Reverse)->Unit(benchmark::kMillisecond);
BENCHMARK(Shift)->Unit(benchmark::kMillisecond);
BENCHMARK(ShiftBack)->Unit(benchmark::kMillisecond);
BENCHMARK(Rotate)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
