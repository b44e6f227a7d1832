// Statistics of 64 x 1,000,000: level and spread against reading the matrix twice, medians and quartiles
// against sorting every channel.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "statistics/descriptive.hpp"
#include "statistics/order_statistics.hpp"

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

const ChannelList& All() {
  static const ChannelList all = [] {
    ChannelList list;
    for (int c = 1; c <= kChannels; ++c) {
      list.push_back(c);
    }
    return list;
  }();
  return all;
}

void ReadTwice(benchmark::State& state) {
  const float* x = Many().matrix.Frame(1);
  const std::int64_t count = Many().matrix.Stride() * kSamples;
  using Four = float __attribute__((vector_size(16), aligned(4)));
  for (auto _ : state) {
    for (int pass = 0; pass < 2; ++pass) {
      Four sum[4] = {};
      for (std::int64_t k = 0; k + 16 <= count; k += 16) {
        for (int v = 0; v < 4; ++v) {
          sum[v] += *reinterpret_cast<const Four*>(x + k + 4 * v);
        }
      }
      benchmark::DoNotOptimize(sum[0] + sum[1] + sum[2] + sum[3]);
    }
  }
}

void Describe(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        DescribeChannels(Many(), All(), {1, kSamples}, {}, static_cast<SimdLevel>(state.range(0))));
  }
}

void SortEveryChannel(benchmark::State& state) {
  for (auto _ : state) {
    for (const int c : All()) {
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
    benchmark::DoNotOptimize(OrderChannels(Many(), All(), {1, kSamples}));
  }
}

void EveryLevel(benchmark::internal::Benchmark* benchmark) {
  for (const SimdLevel level : MachineSimdLevels()) {
    benchmark->Arg(static_cast<std::int64_t>(level));
  }
}

BENCHMARK(ReadTwice)->Unit(benchmark::kMillisecond);
BENCHMARK(Describe)->Apply(EveryLevel)->Unit(benchmark::kMillisecond);
BENCHMARK(SortEveryChannel)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Select)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace velmora
