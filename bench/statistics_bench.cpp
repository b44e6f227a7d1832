// Statistics of 64 x 1,000,000: level and spread against reading the matrix twice, medians and quartiles
// against sorting every channel. Products of all pairs of 64 x 100,000 against loops pair by pair. Lags up
// to 25,000 of 100,000 samples by the fast transform against the plain sums.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "bench_support.hpp"
#include "memory_passes.hpp"
#include "statistics/correlation.hpp"
#include "statistics/cross_correlation.hpp"
#include "statistics/descriptive.hpp"
#include "statistics/order_statistics.hpp"
#include "statistics/product_sums.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int32_t kSamples = 1'000'000;

// Signals on their levels: noise, a hum, some of it quiet.
Trial& Many() {
  static Trial trial = [] {
    Trial made;
    made.Rate = 1000;
    made.AllocateData(kChannels, kSamples);
    made.RebuildTimeColumn();
    std::mt19937 random(1);
    for (std::int64_t i = 1; i <= kSamples; ++i) {
      float* frame = made.matrix.Frame(i);
      for (int c = 1; c <= kChannels; ++c) {
        const double noise = static_cast<double>(random()) / 0x1p31 - 1;
        frame[c] = static_cast<float>(c % 4 * 1000.0 + noise * noise * noise +
                                      std::sin(static_cast<double>(i) * 0.01));
      }
    }
    return made;
  }();
  return trial;
}

void ReadTwice(benchmark::State& state) {
  const SampleMatrix& matrix = Many().matrix;
  for (auto _ : state) {
    for (int pass = 0; pass < 2; ++pass) {
      benchmark::DoNotOptimize(ReadMatrix(matrix, kSamples));
    }
  }
}

void Describe(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(DescribeChannels(Many(), ChannelsTo(kChannels), {1, kSamples}, {},
                                              static_cast<SimdLevel>(state.range(0))));
  }
}

void SortEveryChannel(benchmark::State& state) {
  for (auto _ : state) {
    for (const int c : ChannelsTo(kChannels)) {
      std::vector<float> samples;
      samples.reserve(kSamples);
      for (std::int64_t i = 1; i <= kSamples; ++i) {
        samples.push_back(Many().matrix.Frame(i)[c]);
      }
      benchmark::DoNotOptimize(OrderBySorting(std::move(samples)));
    }
  }
}

void Select(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(OrderChannels(Many(), ChannelsTo(kChannels), {1, kSamples}));
  }
}

constexpr std::int32_t kShorter = 100'000;

// As one would write it: pair after pair, sample after sample.
void ProductsPairByPair(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<double> mean;
    for (const int c : ChannelsTo(kChannels)) {
      double sum = 0;
      for (std::int64_t i = 1; i <= kShorter; ++i) {
        sum += Many().matrix.Frame(i)[c];
      }
      mean.push_back(sum / kShorter);
    }
    for (std::size_t x = 0; x < mean.size(); ++x) {
      for (std::size_t y = x; y < mean.size(); ++y) {
        double sum = 0;
        for (std::int64_t i = 1; i <= kShorter; ++i) {
          const float* frame = Many().matrix.Frame(i);
          sum += (frame[x + 1] - mean[x]) * (frame[y + 1] - mean[y]);
        }
        benchmark::DoNotOptimize(sum);
      }
    }
  }
}

void Products(benchmark::State& state) {
  const auto fill = [](std::int64_t i, std::span<double> to) {
    const float* frame = Many().matrix.Frame(i + 1);
    for (std::size_t c = 0; c < to.size(); ++c) {
      to[c] = frame[c + 1] - 0.5;
    }
  };
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        ProductSums(kShorter, kChannels, fill, {}, static_cast<SimdLevel>(state.range(0))));
  }
}

void Correlate(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(CorrelatePairs(Many(), ChannelsTo(kChannels), {1, kShorter}));
  }
}

std::vector<double> Noise(unsigned seed) {
  std::mt19937 random(seed);
  std::vector<double> noise;
  for (std::int32_t i = 0; i < kShorter; ++i) {
    noise.push_back(static_cast<double>(random()) / 0x1p31 - 1);
  }
  return noise;
}

template <typename Sums>
void SumOverLags(benchmark::State& state, const Sums& sums) {
  const std::vector<double> x = Noise(1);
  const std::vector<double> y = Noise(2);
  for (auto _ : state) {
    benchmark::DoNotOptimize(sums(x, y, 25'000));
  }
}

void LagsPlainly(benchmark::State& state) {
  SumOverLags(state, LagSumsPlain);
}

void LagsByTransform(benchmark::State& state) {
  SumOverLags(state,
              [](const auto& x, const auto& y, std::int32_t lags) { return LagSumsByTransform(x, y, lags); });
}

void EveryLevel(benchmark::internal::Benchmark* benchmark) {
  for (const SimdLevel level : MachineSimdLevels()) {
    benchmark->Arg(static_cast<std::int64_t>(level));
  }
}

BENCHMARK(ReadTwice)->Unit(benchmark::kMillisecond);
BENCHMARK(Describe)->Apply(EveryLevel)->Unit(benchmark::kMillisecond);
BENCHMARK(ProductsPairByPair)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Products)->Apply(EveryLevel)->Unit(benchmark::kMillisecond);
BENCHMARK(Correlate)->Unit(benchmark::kMillisecond);
BENCHMARK(LagsPlainly)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(LagsByTransform)->Unit(benchmark::kMillisecond);
BENCHMARK(SortEveryChannel)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Select)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace velmora
