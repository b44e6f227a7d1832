// Spectra: harmonic regression by every vector width against the plain loop and against its arithmetic alone,
// the fast transform's view against FFTW, epochs that share a plan against epochs that do not, statistics
// against their kernels, and the whole command against the kernel.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <random>

#include "app/command_table.hpp"
#include "bench_support.hpp"
#include "spectra/fft_form.hpp"
#include "spectra/fourier_statistics.hpp"
#include "spectra/harmonic_regression.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kSamples = 20'000;
constexpr std::size_t kHarmonics = 2'000;

Trial MakeTrial(int channels, std::int64_t samples) {
  Trial trial;
  std::mt19937 random(1);
  trial.Rate = 1000.0;
  trial.AllocateData(channels, samples);
  for (std::int64_t i = 1; i <= samples; ++i) {
    for (int c = 1; c <= channels; ++c) {
      trial.Data(i, c) = static_cast<float>(random()) / 0x1p31F - 1.0F;
    }
  }
  trial.Duration = static_cast<double>(samples - 1) / trial.Rate;
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
  return trial;
}

std::vector<double> Noise(std::int64_t samples) {
  const Trial trial = MakeTrial(1, samples);
  std::vector<double> x;
  for (std::int64_t i = 1; i <= samples; ++i) {
    x.push_back(trial.Data(i, 1));
  }
  return x;
}

template <typename Compute>
void Coefficients(benchmark::State& state, const Compute& compute) {
  const std::vector<double> x = Noise(kSamples);
  std::vector<double> cosines(kHarmonics + 1);
  std::vector<double> sines(kHarmonics + 1);
  for (auto _ : state) {
    compute(x, cosines, sines);
    benchmark::DoNotOptimize(sines.data());
  }
}

void Plain(std::span<const double> x, std::span<double> cosines, std::span<double> sines) {
  FourierCoefficientsPlainly(x, cosines, sines);
}
template <SimdLevel level>
void Lanes(std::span<const double> x, std::span<double> cosines, std::span<double> sines) {
  if (level <= MachineSimdLevel()) {
    FourierCoefficients(x, cosines, sines, {}, level);
  }
}
BENCHMARK_CAPTURE(Coefficients, plain, Plain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Coefficients, sse2, Lanes<SimdLevel::Sse2>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Coefficients, avx2, Lanes<SimdLevel::Avx2>)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Coefficients, avx512, Lanes<SimdLevel::Avx512>)->Unit(benchmark::kMillisecond);

// As many multiplications, additions and subtractions of 64 bits on registers that nothing waits for but
// themselves.
struct Avx2Lanes {
  using Vector = double __attribute__((vector_size(32)));
  static constexpr long kLanes = 4;
  static constexpr long kVectors = 12;
};
struct Avx512Lanes {
  using Vector = double __attribute__((vector_size(64)));
  static constexpr long kLanes = 8;
  static constexpr long kVectors = 24;
};
template <typename Lanes>
[[gnu::always_inline]] inline double Arithmetic(double by) {
  using Vector = typename Lanes::Vector;
  Vector u[Lanes::kVectors] = {};
  const long steps = kSamples * static_cast<long>(kHarmonics) / (Lanes::kLanes * Lanes::kVectors);
  const Vector c = by - Vector{};
  for (long k = 0; k < steps; ++k) {
    for (Vector& v : u) {
      v = c * v + c - v;
      asm("" : "+v"(v));
    }
  }
  double sum = 0;
  for (const Vector& v : u) {
    sum += v[0];
  }
  return sum;
}
[[gnu::target("avx2")]] double ArithmeticAvx2(double by) {
  return Arithmetic<Avx2Lanes>(by);
}
[[gnu::target("avx512f")]] double ArithmeticAvx512(double by) {
  return Arithmetic<Avx512Lanes>(by);
}
void Registers(benchmark::State& state, double (*compute)(double), SimdLevel level) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(level <= MachineSimdLevel() ? compute(0.5) : 0.0);
  }
}
BENCHMARK_CAPTURE(Registers, avx2, ArithmeticAvx2, SimdLevel::Avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Registers, avx512, ArithmeticAvx512, SimdLevel::Avx512)->Unit(benchmark::kMillisecond);

/// Picks everything, presses what accepts.
class AcceptAll : public Questions {
 public:
  Button AskBox(const Box& box) override { return box.buttons.front(); }
  std::string AskInput(const InputQuestion& question) override { return question.defaultText; }
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {}; }
  std::string AskPick(ChannelPicker& picker) override {
    picker.All();
    return "Process";
  }
  std::string AskForm(Form& /*form*/) override { return "OK"; }
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}
};

constexpr std::int64_t kLong = 63'880;

void LongKernel(benchmark::State& state) {
  const std::vector<double> x = Noise(kLong);
  std::vector<double> cosines(kLong / 2 + 1);
  std::vector<double> sines(kLong / 2 + 1);
  for (auto _ : state) {
    FourierCoefficients(x, cosines, sines);
  }
}
void LongCommand(benchmark::State& state) {
  AcceptAll answers;
  Workbench workbench(answers);
  workbench.trial = MakeTrial(1, kLong);
  for (auto _ : state) {
    RunCommand(workbench, *FindCommand("fourier.harmonic-regression"));
  }
}
BENCHMARK(LongKernel)->Unit(benchmark::kMillisecond);
BENCHMARK(LongCommand)->Unit(benchmark::kMillisecond);

constexpr std::int64_t kTransform = 524'288;

void FftwAlone(benchmark::State& state) {
  const std::vector<double> x = Noise(kTransform);
  double* in = fftw_alloc_real(kTransform);
  fftw_complex* out = fftw_alloc_complex(kTransform / 2 + 1);
  fftw_plan plan = fftw_plan_dft_r2c_1d(kTransform, in, out, FFTW_ESTIMATE | FFTW_NO_SIMD);
  std::copy(x.begin(), x.end(), in);
  for (auto _ : state) {
    fftw_execute(plan);
  }
  fftw_destroy_plan(plan);
  fftw_free(in);
  fftw_free(out);
}
void FftAnalysis(benchmark::State& state) {
  AcceptAll answers;
  Workbench workbench(answers);
  workbench.trial = MakeTrial(1, kTransform + 1);
  workbench.spectrum.WindowType = 5;
  EpochTransform transform;  // of several channels
  for (auto _ : state) {
    AnalyseByFft(workbench, 1, FftLengthOf(workbench.trial), transform);
  }
}
BENCHMARK(FftwAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(FftAnalysis)->Unit(benchmark::kMillisecond);

template <bool shared>
void Epochs(benchmark::State& state) {
  const Trial trial = MakeTrial(1, 11'000);
  SpectrumMemory spectrum;
  spectrum.WindowType = 5;
  for (auto _ : state) {
    EpochTransform one;
    for (std::int32_t first = 1; first <= 10'000; ++first) {
      std::int32_t harmonics = 500;
      EpochTransform own;
      SpectrumByFFT(trial, {1, first, first + 999}, harmonics, spectrum, shared ? one : own);
    }
  }
}
BENCHMARK(Epochs<true>)->Unit(benchmark::kMillisecond);
BENCHMARK(Epochs<false>)->Unit(benchmark::kMillisecond);

constexpr int kMany = 64;
constexpr std::int32_t kManyHarmonics = 1'000;

void ManyKernels(benchmark::State& state) {
  const Trial trial = MakeTrial(kMany, kSamples);
  SpectrumMemory spectrum;
  for (auto _ : state) {
    for (int c = 1; c <= kMany; ++c) {
      std::int32_t harmonics = kManyHarmonics;
      HarmonicRegressionPlain(trial, {c, 1, trial.NData}, harmonics, spectrum);
    }
  }
}
void ManyStatistics(benchmark::State& state) {
  struct Answers : AcceptAll {
    std::string AskInput(const InputQuestion& /*question*/) override { return "1000"; }
  } answers;
  Workbench workbench(answers);
  workbench.trial = MakeTrial(kMany, kSamples);
  for (auto _ : state) {
    ShowFourierStatistics(workbench);
  }
}
BENCHMARK(ManyKernels)->Unit(benchmark::kMillisecond);
BENCHMARK(ManyStatistics)->Unit(benchmark::kMillisecond);

// How long Cancel waits: the longest time from one turn of the window to the next, in ms, at sizes that take
// seconds.
class Watch : public AcceptAll {
 public:
  void ShowProgress(ProgressPanel& /*panel*/) override {
    const auto now = std::chrono::steady_clock::now();
    longest = std::max(longest, std::chrono::duration<double, std::milli>(now - last_).count());
    last_ = now;
  }
  std::string AskInput(const InputQuestion& question) override {
    return question.title == "Number of Harmonics" ? "1000" : question.defaultText;
  }
  void Begin() { last_ = std::chrono::steady_clock::now(); }
  double longest = 0.0;

 private:
  std::chrono::steady_clock::time_point last_;
};

void TurnsOf(benchmark::State& state, Trial trial, const char* id, const std::string& file) {
  for (auto _ : state) {
    Watch watch;
    Workbench workbench(watch);
    workbench.trial = std::move(trial);  // there is one iteration
    workbench.trial.FileName = file;
    watch.Begin();
    RunCommand(workbench, *FindCommand(id));
    state.counters["longest"] = std::max(static_cast<double>(state.counters["longest"]), watch.longest);
  }
}

void RegressionTurns(benchmark::State& state) {
  TurnsOf(state, MakeTrial(1, kLong), "fourier.harmonic-regression", "");
}
void StatisticsTurns(benchmark::State& state) {
  TurnsOf(state, MakeTrial(kMany, kSamples), "fourier.statistics", "");
}
void ReconstructionTurns(benchmark::State& state) {
  const std::string path = BenchPath("turns.ftf");
  std::ofstream file(path);
  file << "Slope=\t0\tBias=\t1.0\nHarmonic\n";
  for (int k = 1; k <= 1000; ++k) {
    char line[80];
    std::snprintf(line, sizeof line, "       %03d\t%10.4f\t    0.5000\t    0.2500\n", k, k * 0.5);
    file << line;
  }
  file.close();
  TurnsOf(state, MakeTrial(1, 1'000'000), "file.load", path);
  std::filesystem::remove(path);
}
BENCHMARK(RegressionTurns)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(StatisticsTurns)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ReconstructionTurns)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace velmora
