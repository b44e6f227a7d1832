// EMG: statistics, the amplitude distribution, envelope, delay and integral of 64 x 1,000,000 against passes
// over the matrix, and fatigue against its spectra alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "app/command_table.hpp"
#include "bench_support.hpp"
#include "dsp/filters/recursive_filter_lanes.hpp"
#include "dsp/math/channel_math.hpp"
#include "emg/amplitude_distribution.hpp"
#include "emg/emg_kernels.hpp"
#include "emg/emg_statistics.hpp"
#include "emg/envelope_preview.hpp"
#include "emg/fatigue_series.hpp"
#include "memory_passes.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 1'000'000;

Trial Noise(int channels, std::int64_t samples, double rate) {
  Trial trial;
  std::minstd_rand random(1);
  trial.Rate = rate;
  trial.AllocateData(channels, samples);
  for (std::int64_t i = 1; i <= samples; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (int c = 1; c <= channels; ++c) {
      frame[c] = static_cast<float>(random()) / 0x1p30F - 1.0F;
    }
  }
  trial.RebuildTimeColumn();
  trial.Duration = static_cast<double>(samples - 1) / rate;
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
  return trial;
}

Trial& Many() {
  static Trial trial = Noise(kChannels, kSamples, 1000.0);
  return trial;
}

// --- Passes over the matrix

void ReadOnce(benchmark::State& state) {
  const SampleMatrix& matrix = Many().matrix;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadMatrix(matrix, kSamples));
  }
}

void OnePassInPlace(benchmark::State& state) {
  float* x = Many().matrix.Frame(1);
  const std::int64_t count = Many().matrix.Stride() * kSamples;
  for (auto _ : state) {
    for (std::int64_t k = 0; k < count; ++k) {
      x[k] = -x[k];
    }
    benchmark::ClobberMemory();
  }
}

void Statistics(benchmark::State& state) {
  const PerChannel<double> thresholds{};
  const Trial& trial = Many();
  for (auto _ : state) {
    benchmark::DoNotOptimize(TakeEmgStatistics(trial, {1, kSamples}, thresholds, 0.001));
  }
}

void Delay(benchmark::State& state) {
  const ChannelList all = ChannelsTo(kChannels);
  Trial& trial = Many();
  for (auto _ : state) {
    ShiftLeft(trial, all, 48);
    benchmark::ClobberMemory();
  }
}

void Integrate(benchmark::State& state) {
  const ChannelList all = ChannelsTo(kChannels);
  Trial& trial = Many();
  for (auto _ : state) {
    RectifyAndIntegrate(trial, all, 1e-3);
    benchmark::ClobberMemory();
    state.PauseTiming();  // integrals of integrals would not fit
    std::fill_n(trial.matrix.Frame(1), trial.matrix.Stride() * kSamples, 0.5F);
    state.ResumeTiming();
  }
}

// --- Envelope against the filter dialogue's low-pass

void Filter(benchmark::State& state, bool envelope) {
  const FilterSettings settings = EnvelopeFilter(6.0F);
  ChannelsFilter filter{.design = envelope ? FilterDesign::CriticallyDamped : FilterDesign::Butterworth,
                        .Padding = settings.Padding,
                        .Rectify = envelope};
  filter.Cutoffs.fill(6.0F);
  filter.Passes.fill(1);
  filter.ZeroLag.fill(true);
  Trial& trial = Many();
  for (auto _ : state) {
    FilterChannels(trial, filter);
    benchmark::ClobberMemory();
  }
}

// --- Amplitude distribution

constexpr std::int64_t kLong = 10'000'000;

Trial& Long() {
  static Trial trial = Noise(1, kLong, 1000.0);
  return trial;
}

void CountPlainly(benchmark::State& state) {
  const ChannelView x = Long().Channel(1);
  for (auto _ : state) {
    float largest = x[0];
    for (std::int64_t i = 0; i < x.size(); ++i) {
      const float a = std::fabs(x[i]);
      largest = a > largest ? a : largest;
    }
    const auto width = static_cast<float>(largest / 100.0);
    std::vector<double> counts(101);
    for (std::int64_t i = 0; i < x.size(); ++i) {
      int bin = static_cast<int>(std::fabs(x[i]) / width) + 1;
      bin = bin > 100 ? 100 : bin;
      counts[static_cast<std::size_t>(bin)] += 1;
    }
    benchmark::DoNotOptimize(counts.data());
  }
}

void Distribution(benchmark::State& state) {
  Trial& trial = Long();
  for (auto _ : state) {
    benchmark::DoNotOptimize(ComputeAmplitudeDistribution(trial, 1, 100)->Apdf50);
  }
}

// --- Fatigue

/// Nobody is there to be asked.
class Nobody : public Questions {
 public:
  Button AskBox(const Box& box) override { return box.buttons.front(); }
  std::string AskInput(const InputQuestion& /*question*/) override { return {}; }
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {}; }
  std::string AskPick(ChannelPicker& /*picker*/) override { return "Cancel"; }
  std::string AskForm(Form& /*form*/) override { return "OK"; }
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}
};

constexpr FatigueSettings kByRegression{.interval = 1.0, .divisor = 4};
constexpr FatigueSettings kByFft{.method = FatigueMethod::FastFourierTransform, .data = 1024};

Trial Contraction(const FatigueSettings& settings) {
  return settings.method == FatigueMethod::HarmonicRegression ? Noise(1, 120'000, 2000.0)
                                                              : Noise(1, 1023 * 2000 + 1, 2000.0);
}

void Series(benchmark::State& state, const FatigueSettings& settings) {
  Nobody nobody;
  Workbench workbench(nobody);
  workbench.trial = Contraction(settings);
  const FatigueOrder order{.title = "bench", .settings = settings};
  for (auto _ : state) {
    benchmark::DoNotOptimize(RunFatigue(workbench, order).rows.size());
  }
  state.counters["intervals"] = static_cast<double>(IntervalsOf(workbench.trial, settings).Count());
}

void SpectraAlone(benchmark::State& state) {
  const Trial trial = Contraction(kByRegression);
  const FatigueIntervals intervals = IntervalsOf(trial, kByRegression);
  SpectrumMemory spectrum;
  for (auto _ : state) {
    for (std::int64_t k = 0; k < intervals.Count(); ++k) {
      std::int32_t harmonics = AllHarmonics(intervals);
      benchmark::DoNotOptimize(HarmonicRegressionPlain(trial, intervals.At(k, 1), harmonics, spectrum));
    }
  }
}

void PlanPerInterval(benchmark::State& state) {
  const Trial trial = Contraction(kByFft);
  const FatigueIntervals intervals = IntervalsOf(trial, kByFft);
  SpectrumMemory spectrum;
  for (auto _ : state) {
    for (std::int64_t k = 0; k < intervals.Count(); ++k) {
      EpochTransform own;
      std::int32_t harmonics = 512;
      benchmark::DoNotOptimize(SpectrumByFFT(trial, intervals.At(k, 1), harmonics, spectrum, own));
    }
  }
}

BENCHMARK(ReadOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(Statistics)->Unit(benchmark::kMillisecond);
BENCHMARK(OnePassInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK(Delay)->Unit(benchmark::kMillisecond);
BENCHMARK(Integrate)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, low_pass, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, envelope, true)->Unit(benchmark::kMillisecond);
BENCHMARK(CountPlainly)->Unit(benchmark::kMillisecond);
BENCHMARK(Distribution)->Unit(benchmark::kMillisecond);
BENCHMARK(SpectraAlone)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Series, regression, kByRegression)->Unit(benchmark::kMillisecond);
BENCHMARK(PlanPerInterval)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Series, fft, kByFft)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
