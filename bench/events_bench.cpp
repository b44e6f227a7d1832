// Thresholds and onsets of 64 x 1,000,000: the baseline against a plain read of the matrix, the scan for
// onsets of all channels against a strided read of each channel to where its scan stops.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "events/baseline.hpp"
#include "events/onset_scan.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int32_t kSamples = 1'000'000;

// Noise at rest, and a burst that begins late, at another place in every channel.
const Trial& Recording() {
  static const Trial trial = [] {
    Trial made;
    made.Rate = 1000;
    made.AllocateData(kChannels, kSamples);
    std::mt19937 random(1);
    for (std::int32_t i = 1; i <= kSamples; ++i) {
      float* frame = made.matrix.Frame(i);
      for (int c = 1; c <= kChannels; ++c) {
        const bool burst = i > 700'000 + 4000 * c && i < 720'000 + 4000 * c;
        frame[c] = static_cast<float>(random()) / 0x1p32F + (burst ? 2.0F : 0.0F);
      }
    }
    return made;
  }();
  return trial;
}

std::vector<ScannedChannel> AllChannels() {
  std::vector<ScannedChannel> scanned;
  for (int c = 1; c <= kChannels; ++c) {
    scanned.push_back({c, 1.5F});
  }
  return scanned;
}

// One word of every cache line: what memory alone takes.
void ReadMatrix(benchmark::State& state) {
  const Trial& trial = Recording();
  const auto floats = static_cast<std::int64_t>(kSamples) * trial.matrix.Stride();
  const float* data = trial.matrix.Frame(1);
  for (auto _ : state) {
    float sums[16] = {};
    for (std::int64_t k = 0; k + 16 <= floats; k += 16) {
      for (int lane = 0; lane < 16; ++lane) {
        sums[lane] += data[k + lane];
      }
    }
    benchmark::DoNotOptimize(sums);
  }
}

void BaselineFast(benchmark::State& state) {
  const Trial& trial = Recording();
  const auto level = static_cast<SimdLevel>(state.range(0));
  if (level > MachineSimdLevel()) {
    state.SkipWithError("this machine has no such vectors");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(TakeBaseline(trial, {1, kSamples}, level));
  }
}

void BaselinePlain(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(TakeBaselinePlain(Recording(), {1, kSamples}));
  }
}

void ReadToOffsets(benchmark::State& state) {
  const Trial& trial = Recording();
  const std::vector<Burst> bursts = FindBursts(trial, AllChannels(), {1, kSamples});
  for (auto _ : state) {
    for (int c = 1; c <= kChannels; ++c) {
      float sum = 0.0F;
      const float* sample = trial.matrix.Frame(1) + c;
      for (std::int32_t i = 1; i <= bursts[static_cast<std::size_t>(c - 1)].offset;
           ++i, sample += trial.matrix.Stride()) {
        sum += *sample;
      }
      benchmark::DoNotOptimize(sum);
    }
  }
}

void OnsetsFast(benchmark::State& state) {
  const std::vector<ScannedChannel> scanned = AllChannels();
  for (auto _ : state) {
    benchmark::DoNotOptimize(FindBursts(Recording(), scanned, {1, kSamples}));
  }
}

void OnsetsPlain(benchmark::State& state) {
  const std::vector<ScannedChannel> scanned = AllChannels();
  for (auto _ : state) {
    for (const ScannedChannel& one : scanned) {
      benchmark::DoNotOptimize(FindBurstPlain(Recording(), one, {1, kSamples}));
    }
  }
}

BENCHMARK(ReadMatrix)->Unit(benchmark::kMillisecond);
BENCHMARK(BaselineFast)->ArgName("level")->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BaselinePlain)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadToOffsets)->Unit(benchmark::kMillisecond);
BENCHMARK(OnsetsFast)->Unit(benchmark::kMillisecond);
BENCHMARK(OnsetsPlain)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
