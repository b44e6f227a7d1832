// Reduction of one and of two eight-channel plates of 1,000,000 samples, against multiplying the same eight
// channels in place.
#include <benchmark/benchmark.h>

#include "forceplate/kistler_reduction.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kSamples = 1'000'000;
constexpr KistlerFactors kFactors{12.0F, 20.0F, -5.0F, 1.0F, -1.0F, 1.0F};

// Forces of some hundred newtons, a fifth of the samples unloaded.
void Fill(Trial& trial, int channels) {
  if (trial.NChan != channels) {
    trial.AllocateData(channels, kSamples);
  }
  for (std::int64_t i = 1; i <= kSamples; ++i) {
    float* x = trial.matrix.Frame(i);
    for (int c = 0; c <= channels; ++c) {
      x[c] = i % 5 == 0 ? 0.5F : static_cast<float>((i * 7 + c * 13) % 201) + 50.0F;
    }
  }
}

// Both sides begin with forces that were written just before: what is reduced is none.
template <typename Work>
void OverFreshForces(benchmark::State& state, const Work& work) {
  static Trial trial;
  for (auto _ : state) {
    state.PauseTiming();
    Fill(trial, static_cast<int>(state.range(0)));
    state.ResumeTiming();
    work(trial);
    benchmark::ClobberMemory();
  }
}

void MultiplyEightChannels(benchmark::State& state) {
  OverFreshForces(state, [](Trial& trial) {
    for (std::int64_t i = 1; i <= kSamples; ++i) {
      float* __restrict x = trial.matrix.Frame(i);
      for (int c = 1; c <= kKistlerChannels; ++c) {
        x[c] *= 1.0000001F;
      }
    }
  });
}
BENCHMARK(MultiplyEightChannels)->Arg(8)->Arg(16)->Arg(64)->Unit(benchmark::kMillisecond);

void OnePlate(benchmark::State& state) {
  OverFreshForces(state, [](Trial& trial) { ReduceKistlerForces(trial, 0, kFactors, 25.0F); });
}
BENCHMARK(OnePlate)->Arg(8)->Arg(16)->Arg(64)->Unit(benchmark::kMillisecond);

void OnePlateWithTurns(benchmark::State& state) {
  int turns = 0;
  OverFreshForces(state, [&turns](Trial& trial) {
    ReduceKistlerForces(trial, 0, kFactors, 25.0F, [&turns] { benchmark::DoNotOptimize(++turns); });
  });
}
BENCHMARK(OnePlateWithTurns)->Arg(8)->Unit(benchmark::kMillisecond);

void OnePlatePlainly(benchmark::State& state) {
  OverFreshForces(state, [](Trial& trial) { ReduceKistlerForcesPlainly(trial, 0, kFactors, 25.0F); });
}
BENCHMARK(OnePlatePlainly)->Arg(8)->Arg(16)->Arg(64)->Unit(benchmark::kMillisecond);

void TwoPlates(benchmark::State& state) {
  OverFreshForces(state, [](Trial& trial) {
    ReduceKistlerForces(trial, 0, kFactors, 25.0F);
    ReduceKistlerForces(trial, kKistlerChannels, kFactors, 25.0F);
  });
}
BENCHMARK(TwoPlates)->Arg(16)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
