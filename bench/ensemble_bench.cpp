// Averaging. A file of 64 x 1,000,000 that is loaded alone, loaded and added at 100 intervals, at 1,000,000;
// the sums alone, by the plain loop and by each vector width; and 1,000 files of 8 x 2,000 from the first to
// the means, against bench/numpy_ensemble.py on the same files (left in VELMORA_BENCH_DIR).
#include <benchmark/benchmark.h>

#include <filesystem>

#include "app/command_table.hpp"
#include "bench_support.hpp"
#include "core/workbench.hpp"
#include "ensemble/ensemble_average.hpp"
#include "ensemble/ensemble_trial.hpp"
#include "import/load_file.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr int kAveraged = 32;
constexpr std::int64_t kSamples = 1'000'000;
constexpr int kFiles = 1000;

void FillTrial(Trial& trial, int channels, std::int64_t samples, int seed) {
  trial.Rate = 1000.0;
  trial.AllocateData(channels, samples);
  trial.SetChannelDefaults(0);
  for (int c = 1; c <= channels; ++c) {
    trial.SetChannelDefaults(c);
  }
  float* x = trial.matrix.Frame(1);
  for (std::int64_t k = 0; k < trial.matrix.Stride() * samples; ++k) {
    x[k] = static_cast<float>((k + seed) % 2001 - 1000) / 500.0F;
  }
  trial.RebuildTimeColumn();
}

void WriteTrial(const std::string& path, int channels, std::int64_t samples, int seed) {
  SaveTo questions(path);
  Workbench workbench(questions);
  FillTrial(workbench.trial, channels, samples, seed);
  RunCommand(workbench, *FindCommand("save.vmb"));
}

const std::string& LargeFile() {
  static const std::string path = [] {
    std::string made = BenchPath("large-trial.vmb");
    WriteTrial(made, kChannels, kSamples, 0);
    return made;
  }();
  return path;
}

ChannelList FirstChannels(int count) {
  ChannelList channels;
  for (int c = 1; c <= count; ++c) {
    channels.push_back(c);
  }
  return channels;
}

void Load(Workbench& workbench, const std::string& path) {
  workbench.trial.FileName = path;
  LoadFile(workbench);
}

void LoadAlone(benchmark::State& state) {
  SaveTo questions("");
  Workbench workbench(questions);
  Load(workbench, LargeFile());
  for (auto _ : state) {
    Load(workbench, LargeFile());
  }
}

void LoadAndAdd(benchmark::State& state) {
  SaveTo questions("");
  Workbench workbench(questions);
  Load(workbench, LargeFile());
  EnsembleAverage average;
  average.Choose(workbench.trial, FirstChannels(kAveraged));
  average.Begin(workbench, static_cast<std::int32_t>(state.range(0)));
  // A file in the middle of a list: its memory is there.
  benchmark::DoNotOptimize(average.Add(workbench.trial, average.Describe(workbench)));
  for (auto _ : state) {
    Load(workbench, LargeFile());
    benchmark::DoNotOptimize(average.Add(workbench.trial, average.Describe(workbench)));
  }
}

template <SimdLevel level>
void Add(benchmark::State& state) {
  Trial trial;
  FillTrial(trial, kChannels, kSamples, 0);
  EnsembleSums sums;
  sums.Begin(FirstChannels(kAveraged), kSamples - 1);
  sums.Add(trial);
  for (auto _ : state) {
    sums.Add(trial, level <= MachineSimdLevel() ? level : SimdLevel::Sse2);
  }
}

void AddPlainly(benchmark::State& state) {
  Trial trial;
  FillTrial(trial, kChannels, kSamples, 0);
  std::vector<float> sums(static_cast<std::size_t>(2 * kAveraged * kSamples));
  for (auto _ : state) {
    for (int c = 1; c <= kAveraged; ++c) {
      for (std::int64_t k = 1; k <= kSamples; ++k) {
        const auto at = static_cast<std::size_t>((k - 1) * 2 * kAveraged + c - 1);
        const float x = trial.matrix.Frame(k)[c];
        sums[at] += x;
        sums[at + kAveraged] += x * x;
      }
    }
    benchmark::ClobberMemory();
  }
}

void ThousandFiles(benchmark::State& state) {
  std::vector<std::string> paths;
  for (int k = 0; k < kFiles; ++k) {
    paths.push_back(BenchPath(("ensemble-" + std::to_string(k) + ".vmb").c_str()));
    WriteTrial(paths.back(), 8, 2000, k);
  }
  SaveTo questions("");
  Workbench workbench(questions);
  for (auto _ : state) {
    EnsembleAverage average;
    for (const std::string& path : paths) {
      Load(workbench, path);
      if (&path == &paths.front()) {
        average.Choose(workbench.trial, FirstChannels(8));
        average.Begin(workbench, 100);
      }
      benchmark::DoNotOptimize(average.Add(workbench.trial, average.Describe(workbench)));
    }
    MakeAveragedTrial(workbench, average, false, "mean");
  }
}

BENCHMARK(LoadAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadAndAdd)->Arg(100)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(AddPlainly)->Unit(benchmark::kMillisecond);
BENCHMARK(Add<SimdLevel::Sse2>)->Unit(benchmark::kMillisecond);
BENCHMARK(Add<SimdLevel::Avx2>)->Unit(benchmark::kMillisecond);
BENCHMARK(Add<SimdLevel::Avx512>)->Unit(benchmark::kMillisecond);
BENCHMARK(ThousandFiles)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
