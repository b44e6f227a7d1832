// Re-sampling 64 channels of 1,000,000 samples by linear interpolation, against copying the same matrix.
#include <benchmark/benchmark.h>

#include <cstring>

#include "core/trial/resample.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 1'000'000;

Trial MakeTrial() {
  Trial trial;
  trial.Rate = 1000.0;
  trial.AllocateData(kChannels, kSamples);
  float* x = trial.matrix.Frame(1);
  for (std::int64_t k = 0; k < trial.matrix.Stride() * kSamples; ++k) {
    x[k] = static_cast<float>(k % 2001 - 1000) / 500.0F;
  }
  return trial;
}

void Copy(const Trial& trial, SampleMatrix& to) {
  const auto bytes = static_cast<std::size_t>(trial.matrix.Stride() * kSamples) * sizeof(float);
  std::memcpy(to.Frame(1), trial.matrix.Frame(1), bytes);
  benchmark::ClobberMemory();
}

void CopyIntoWarmMemory(benchmark::State& state) {
  const Trial trial = MakeTrial();
  SampleMatrix to;
  to.Allocate(kChannels, kSamples);
  Copy(trial, to);
  for (auto _ : state) {
    Copy(trial, to);
  }
}

// What every re-sampling has to do: the new matrix stands beside the old one.
void CopyIntoFreshMatrix(benchmark::State& state) {
  const Trial trial = MakeTrial();
  for (auto _ : state) {
    SampleMatrix to;
    to.Allocate(kChannels, kSamples, SampleMatrix::Fill::None);
    Copy(trial, to);
  }
}

// One sample fewer each time, which needs no new matrix; or back to the full number, which does.
template <typename Resampler>
void Fewer(benchmark::State& state, const Resampler& resample) {
  Trial trial = MakeTrial();
  std::int64_t intervals = kSamples - 1;
  for (auto _ : state) {
    resample(trial, --intervals);
  }
}

template <typename Resampler>
void More(benchmark::State& state, const Resampler& resample) {
  Trial trial = MakeTrial();
  for (auto _ : state) {
    trial.ResizeData(kSamples - 1);
    resample(trial, kSamples - 1);
  }
}

void Plainly(Trial& trial, std::int64_t n) {
  ResampleAllPlainly(trial, n);
}
template <SimdLevel level>
void Vectors(Trial& trial, std::int64_t n) {
  if (level <= MachineSimdLevel()) {
    ResampleAll(trial, n, level);
  }
}

BENCHMARK(CopyIntoWarmMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyIntoFreshMatrix)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fewer, plain, Plainly)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fewer, sse2, Vectors<SimdLevel::Sse2>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fewer, avx2, Vectors<SimdLevel::Avx2>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fewer, avx512, Vectors<SimdLevel::Avx512>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(More, plain, Plainly)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(More, sse2, Vectors<SimdLevel::Sse2>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(More, avx512, Vectors<SimdLevel::Avx512>)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
