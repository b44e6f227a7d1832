// Head impacts and integrals: the search for the window of the HIC, or for its pair of samples, against the
// plain loop, the whole reduction against its totals in plain loops, integrals of 64 x 1,000,000 against one
// read of the matrix.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "bench_support.hpp"
#include "impact/accelerometry/hic_over_pairs.hpp"
#include "impact/head_impact.hpp"
#include "impact/integrals.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kSamples = 1'000'000;
constexpr double kRate = 20000;

enum Shape : std::int64_t { kImpacts, kConstant, kHum };

std::vector<float> MadeAcceleration(std::int64_t shape) {
  std::vector<float> a(kSamples, 1.0F);
  for (std::int64_t i = 0; i < kSamples; ++i) {
    const double t = static_cast<double>(i) / kRate;
    double value = 1.0;
    if (shape == kHum) {
      value = 1 + 0.01 * std::sin(2 * 3.14159265 * 0.3 * t);
    } else if (shape == kImpacts) {
      const auto inside = static_cast<double>(i % 200000);
      value = 0.2 + 0.1 * std::sin(t * 14000) + (inside < 300 ? 90 * std::sin(3.14159265 * inside / 300) : 0);
    }
    a[static_cast<std::size_t>(i)] = static_cast<float>(value);
  }
  return a;
}

void HicPlain(benchmark::State& state) {
  const std::vector<float> a = MadeAcceleration(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindHicPlain(a, state.range(1), 1 / kRate));
  }
}

void HicFast(benchmark::State& state) {
  const std::vector<float> a = MadeAcceleration(state.range(0));
  const auto level = static_cast<SimdLevel>(state.range(2));
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindHic(a, state.range(1), 1 / kRate, level));
  }
}

// 1 s and pairs up to 36 ms apart.
std::vector<double> OneSecond(std::int64_t shape) {
  const std::vector<float> a = MadeAcceleration(shape);
  return {a.begin(), a.begin() + static_cast<std::int64_t>(kRate)};
}
constexpr std::int64_t kLongestPair = 720;

void PairsPlain(benchmark::State& state) {
  const std::vector<double> r = OneSecond(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindHicOverPairsPlain(r, kLongestPair, 1 / kRate));
  }
}

void PairsFast(benchmark::State& state) {
  const std::vector<double> r = OneSecond(state.range(0));
  const auto level = static_cast<SimdLevel>(state.range(1));
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindHicOverPairs(r, kLongestPair, 1 / kRate, level));
  }
}

void PlainTotals(benchmark::State& state) {
  const std::vector<float> a = MadeAcceleration(kImpacts);
  for (auto _ : state) {
    float sum = 0.0F;
    float powers = 0.0F;
    float delta = 0.0F;
    for (const float x : a) {
      sum += x;
      powers = static_cast<float>(powers + std::pow(static_cast<double>(x), 2.5));
      delta = static_cast<float>(delta + static_cast<double>(x) / kGravityConstant / kRate);
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(powers);
    benchmark::DoNotOptimize(delta);
  }
}

Trial MadeTrial(int channels, std::int64_t shape) {
  Trial trial;
  trial.Rate = kRate;
  trial.AllocateData(channels, kSamples);
  trial.RebuildTimeColumn();
  const std::vector<float> a = MadeAcceleration(shape);
  for (int c = 1; c <= channels; ++c) {
    for (std::int64_t i = 1; i <= kSamples; ++i) {
      trial.Data(i, c) = a[static_cast<std::size_t>(i - 1)];
    }
  }
  return trial;
}

void Reduction(benchmark::State& state) {
  Trial trial = MadeTrial(1, kImpacts);
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReduceHeadImpact(trial, 1, {1, kSamples}, {.cutoff = 0.0F}).gsi);
  }
}

Trial& Many() {
  static Trial trial = MadeTrial(64, kHum);
  return trial;
}

void ReadOnce(benchmark::State& state) {
  const SampleMatrix& matrix = Many().matrix;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadMatrix(matrix, kSamples));
  }
}

void Simpson(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(SimpsonIntegrals(Many(), 1 / kRate));
  }
}
void Trapezoid(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(TrapezoidIntegrals(Many(), 1 / kRate));
  }
}
void Statistics(benchmark::State& state) {
  const ChannelList all = ChannelsTo(64);
  for (auto _ : state) {
    benchmark::DoNotOptimize(IntegrateChannels(Many(), all, {1, kSamples}, 1 / kRate));
  }
}

void Fast(benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t shape : {kImpacts, kConstant, kHum}) {
    for (const SimdLevel level : MachineSimdLevels()) {
      benchmark->Args({shape, 360, static_cast<std::int64_t>(level)});
    }
  }
  for (const SimdLevel level : MachineSimdLevels()) {
    benchmark->Args({kConstant, 3600, static_cast<std::int64_t>(level)});
  }
}

void FastPairs(benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t shape : {kImpacts, kConstant, kHum}) {
    for (const SimdLevel level : MachineSimdLevels()) {
      benchmark->Args({shape, static_cast<std::int64_t>(level)});
    }
  }
}

BENCHMARK(PairsPlain)->DenseRange(kImpacts, kHum)->Unit(benchmark::kMillisecond);
BENCHMARK(PairsFast)->Apply(FastPairs)->Unit(benchmark::kMillisecond);
BENCHMARK(HicPlain)->Args({kImpacts, 360})->Args({kConstant, 360})->Unit(benchmark::kMillisecond);
BENCHMARK(HicPlain)->Args({kHum, 360})->Args({kConstant, 3600})->Unit(benchmark::kMillisecond);
BENCHMARK(HicFast)->Apply(Fast)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainTotals)->Unit(benchmark::kMillisecond);
BENCHMARK(Reduction)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(Simpson)->Unit(benchmark::kMillisecond);
BENCHMARK(Trapezoid)->Unit(benchmark::kMillisecond);
BENCHMARK(Statistics)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
