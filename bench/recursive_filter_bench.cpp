// Zero-lag low-pass of 64 channels of 1,000,000 samples, against two passes in place over the same
// matrix; one channel alone, against the plain loop on a gathered buffer.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "dsp/filters/recursive_filter.hpp"
#include "dsp/filters/recursive_filter_lanes.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kSamples = 1'000'000;
constexpr FilterSettings kSettings{.Cutoff = 6.0F, .Padding = -10, .IsZeroLag = true};

void MakeNoise(Trial& trial, int channels) {
  trial.Rate = 1000.0;
  trial.AllocateData(channels, kSamples);
  std::minstd_rand random(1);
  float* x = trial.matrix.Frame(1);
  const std::int64_t count = trial.matrix.Stride() * kSamples;
  for (std::int64_t k = 0; k < count; ++k) {
    x[k] = static_cast<float>(random()) / 0x1p30F - 1.0F;
  }
}

// Filtering noise again and again stays in the range of ordinary numbers: what passes at 6 Hz passes.
Trial& SharedTrial(int channels) {
  static Trial trial;
  if (trial.NChan != channels) {
    MakeNoise(trial, channels);
  }
  return trial;
}

ChannelsFilter Together(const std::vector<int>& channels) {
  ChannelsFilter filter{.Padding = kSettings.Padding};
  filter.Passes.fill(kSettings.Passes);
  filter.ZeroLag.fill(kSettings.IsZeroLag);
  for (const int c : channels) {
    filter.Cutoffs[static_cast<std::size_t>(c)] = kSettings.Cutoff;
  }
  return filter;
}

std::vector<int> FirstChannels(int count) {
  std::vector<int> channels;
  for (int c = 1; c <= count; ++c) {
    channels.push_back(c);
  }
  return channels;
}

void TwoPassesInPlace(benchmark::State& state) {
  Trial& trial = SharedTrial(64);
  for (auto _ : state) {
    for (int pass = 0; pass < 2; ++pass) {
      NegateInPlace(trial.matrix, kSamples);
      benchmark::ClobberMemory();
    }
  }
}

void ChannelsOf64(benchmark::State& state, int count, SimdLevel level) {
  if (level > MachineSimdLevel()) {
    state.SkipWithError("not on this machine");
    return;
  }
  Trial& trial = SharedTrial(64);
  const ChannelsFilter filter = Together(FirstChannels(count));
  for (auto _ : state) {
    FilterChannels(trial, filter, level);
    benchmark::ClobberMemory();
  }
}

void EveryOtherChannel(benchmark::State& state) {
  Trial& trial = SharedTrial(64);
  std::vector<int> odd;
  for (int c = 1; c <= 64; c += 2) {
    odd.push_back(c);
  }
  const ChannelsFilter filter = Together(odd);
  for (auto _ : state) {
    FilterChannels(trial, filter);
    benchmark::ClobberMemory();
  }
}

void PlainLoopChannelByChannel(benchmark::State& state) {
  Trial& trial = SharedTrial(64);
  for (auto _ : state) {
    for (int c = 1; c <= 64; ++c) {
      LowPassChannel(trial, c, {1, trial.NData}, kSettings);
    }
  }
}

void PlainLoopOnBuffer(benchmark::State& state) {
  Trial& trial = SharedTrial(64);
  std::vector<float> gathered;
  for (std::int64_t i = 1; i <= kSamples; ++i) {
    gathered.push_back(trial.Data(i, 5));
  }
  for (auto _ : state) {
    LowPassArray(gathered, trial.Rate, kSettings);
    benchmark::ClobberMemory();
  }
}

void OneChannelOf(benchmark::State& state, int channels) {
  Trial& trial = SharedTrial(channels);
  const ChannelsFilter filter = Together({channels > 1 ? 5 : 1});
  for (auto _ : state) {
    FilterChannels(trial, filter);
    benchmark::ClobberMemory();
  }
}

BENCHMARK(TwoPassesInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, all_sse2, 64, SimdLevel::Sse2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, all_avx2, 64, SimdLevel::Avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, all_avx512, 64, SimdLevel::Avx512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, all_machine, 64, MachineSimdLevel())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, sixty, 60, MachineSimdLevel())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, eight, 8, MachineSimdLevel())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ChannelsOf64, two, 2, MachineSimdLevel())->Unit(benchmark::kMillisecond);
BENCHMARK(EveryOtherChannel)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainLoopChannelByChannel)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainLoopOnBuffer)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChannelOf, sixty_four, 64)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneChannelOf, one, 1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
