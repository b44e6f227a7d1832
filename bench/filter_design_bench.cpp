// Designed filters over 64 channels of 1,000,000 samples against the plain loop, zero-lag sections against
// four passes in place over the same matrix, residual analysis against the low-pass run again and again.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "dsp/design/fir_design.hpp"
#include "dsp/design/recursive_design.hpp"
#include "dsp/design/residuals.hpp"
#include "dsp/design/savitzky_golay.hpp"
#include "dsp/design/section_runs.hpp"
#include "dsp/design/tap_runs.hpp"
#include "emg/maximums/window_maximum.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kSamples = 1'000'000;
constexpr double kRate = 1000;

Trial& SharedTrial(int channels, std::int64_t samples) {
  static Trial trial;
  if (trial.NChan != channels || trial.NData != samples) {
    trial.Rate = kRate;
    trial.AllocateData(channels, samples);
    std::minstd_rand random(1);
    float* x = trial.matrix.Frame(1);
    const std::int64_t count = trial.matrix.Stride() * samples;
    for (std::int64_t k = 0; k < count; ++k) {
      x[k] = static_cast<float>(random()) / 0x1p30F - 1.0F;
    }
  }
  return trial;
}

ChannelList FirstChannels(int count) {
  ChannelList channels;
  for (int c = 1; c <= count; ++c) {
    channels.push_back(c);
  }
  return channels;
}

bool Has(benchmark::State& state, SimdLevel level) {
  if (level > MachineSimdLevel()) {
    state.SkipWithError("not on this machine");
    return false;
  }
  return true;
}

// One channel after the other, gathered into doubles and put back.
template <typename Work>
void ByChannel(Trial& trial, const Work& work) {
  std::vector<double> x(static_cast<std::size_t>(trial.NData));
  for (int c = 1; c <= trial.NChan; ++c) {
    const ChannelView view = trial.Channel(c);
    for (std::int64_t i = 0; i < view.size(); ++i) {
      x[static_cast<std::size_t>(i)] = view[i];
    }
    work(x);
    for (std::int64_t i = 0; i < view.size(); ++i) {
      view[i] = static_cast<float>(x[static_cast<std::size_t>(i)]);
    }
  }
}

void FourPassesInPlace(benchmark::State& state) {
  Trial& trial = SharedTrial(64, kSamples);
  for (auto _ : state) {
    for (int pass = 0; pass < 4; ++pass) {
      NegateInPlace(trial.matrix, kSamples);
      benchmark::ClobberMemory();
    }
  }
}

Biquads FourthOrder() {
  return DesignFilter(KeptOverBothRuns({.order = 4, .rate = kRate, .cutoff = 6}));
}

void ZeroLagButterworth(benchmark::State& state, SimdLevel level) {
  if (!Has(state, level)) {
    return;
  }
  Trial& trial = SharedTrial(64, kSamples);
  const Biquads sections = FourthOrder();
  for (auto _ : state) {
    RunSections(trial, FirstChannels(64), sections, RunDirection::ZeroLag, level);
  }
}

void ZeroLagButterworthPlain(benchmark::State& state) {
  Trial& trial = SharedTrial(64, kSamples);
  const Biquads sections = FourthOrder();
  for (auto _ : state) {
    ByChannel(trial, [&](std::vector<double>& x) { RunSectionsPlain(x, sections, RunDirection::ZeroLag); });
  }
}

TapFilter Fir101() {
  return {DesignFir({.rate = kRate, .cutoff = 50})};
}

void Fir(benchmark::State& state, SimdLevel level) {
  if (!Has(state, level)) {
    return;
  }
  Trial& trial = SharedTrial(64, kSamples);
  const TapFilter taps = Fir101();
  for (auto _ : state) {
    RunTaps(trial, FirstChannels(64), taps, RunDirection::ZeroLag, level);
  }
}

void FirPlain(benchmark::State& state) {
  Trial& trial = SharedTrial(64, kSamples);
  const TapFilter taps = Fir101();
  for (auto _ : state) {
    ByChannel(trial, [&](std::vector<double>& x) { RunTapsPlain(x, taps, RunDirection::ZeroLag); });
  }
}

void Polynomial(benchmark::State& state, SimdLevel level) {
  if (!Has(state, level)) {
    return;
  }
  Trial& trial = SharedTrial(64, kSamples);
  const SavitzkyGolay filter = DesignSavitzkyGolay(101, 3, 0, kRate);
  for (auto _ : state) {
    RunSavitzkyGolay(trial, FirstChannels(64), filter, level);
  }
}

void PolynomialPlain(benchmark::State& state) {
  Trial& trial = SharedTrial(64, kSamples);
  const SavitzkyGolay filter = DesignSavitzkyGolay(101, 3, 0, kRate);
  for (auto _ : state) {
    ByChannel(trial, [&](std::vector<double>& x) { RunSavitzkyGolayPlain(x, filter); });
  }
}

void Residuals(benchmark::State& state) {
  Trial& trial = SharedTrial(1, 100'000);
  const std::vector<float> cutoffs = ResidualCutoffs(5, 380, 100);
  for (auto _ : state) {
    benchmark::DoNotOptimize(ResidualCurve(trial, 1, {1, trial.NData}, cutoffs));
  }
}

void ResidualsPlain(benchmark::State& state) {
  Trial& trial = SharedTrial(1, 100'000);
  const std::vector<float> cutoffs = ResidualCutoffs(5, 380, 100);
  for (auto _ : state) {
    benchmark::DoNotOptimize(ResidualCurvePlain(trial, 1, {1, trial.NData}, cutoffs));
  }
}

// Half a second of 100,000 samples.
template <WindowMaximum (*find)(Trial&, int, SampleRange, const MaximumRule&)>
void Windows(benchmark::State& state) {
  Trial& trial = SharedTrial(1, 100'000);
  for (auto _ : state) {
    benchmark::DoNotOptimize(find(trial, 1, {1, trial.NData}, {500, MaximumMethod::MeanAbsolute}));
  }
}

WindowMaximum FindFast(Trial& trial, int channel, SampleRange range, const MaximumRule& rule) {
  return FindWindowMaximum(trial, channel, range, rule);
}

BENCHMARK(FourPassesInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZeroLagButterworth, sse2, SimdLevel::Sse2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZeroLagButterworth, avx2, SimdLevel::Avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZeroLagButterworth, avx512, SimdLevel::Avx512)->Unit(benchmark::kMillisecond);
BENCHMARK(ZeroLagButterworthPlain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fir, sse2, SimdLevel::Sse2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fir, avx2, SimdLevel::Avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fir, avx512, SimdLevel::Avx512)->Unit(benchmark::kMillisecond);
BENCHMARK(FirPlain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Polynomial, sse2, SimdLevel::Sse2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Polynomial, avx2, SimdLevel::Avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Polynomial, avx512, SimdLevel::Avx512)->Unit(benchmark::kMillisecond);
BENCHMARK(PolynomialPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(Residuals)->Unit(benchmark::kMillisecond);
BENCHMARK(ResidualsPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(Windows<FindFast>)->Name("WindowMaximum")->Unit(benchmark::kMillisecond);
BENCHMARK(Windows<FindWindowMaximumPlain>)->Name("WindowMaximumPlain")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
