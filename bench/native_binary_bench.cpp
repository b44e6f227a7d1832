// Loading and saving 64 channels of 1,000,000 samples as .VMB (260 MB), against the same bytes through
// read() into warm memory and write() from it. The page cache is warm except where the name says cold.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench_support.hpp"
#include "export/save_data.hpp"
#include "import/load_file.hpp"

namespace velmora {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

const std::string& BigFile() {
  static const std::string path = [] {
    std::string made = BenchPath("velmora2-bench.vmb");
    SaveTo questions(made);
    Workbench workbench(questions);
    workbench.trial.Rate = 1000.0;
    workbench.trial.AllocateData(64, 1'000'000);
    workbench.trial.CursorHi = 1'000'000;
    float* x = workbench.trial.matrix.Frame(1);
    for (std::int64_t k = 0; k < 65'000'000; ++k) {
      x[k] = static_cast<float>(k % 4001) / 7.0F;
    }
    SaveData(workbench, SaveFormat::NativeBinary);
    return made;
  }();
  return path;
}

void DropFromCache(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY);
  fsync(file);
  posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
  close(file);
}

void ReadAll(const std::string& path, std::vector<char>& to) {
  const int file = open(path.c_str(), O_RDONLY);
  std::size_t done = 0;
  for (ssize_t got = 1; got > 0; done += static_cast<std::size_t>(got)) {
    got = read(file, to.data() + done, std::min(kPiece, to.size() - done));
  }
  close(file);
  benchmark::DoNotOptimize(to.data());
}

void ReadIntoWarmMemory(benchmark::State& state) {
  std::vector<char> memory(std::filesystem::file_size(BigFile()), 1);
  for (auto _ : state) {
    ReadAll(BigFile(), memory);
  }
}

// As cat does: 128 KiB at a time into the same place.
void CatCold(benchmark::State& state) {
  std::vector<char> piece(std::size_t{128} << 10);
  for (auto _ : state) {
    state.PauseTiming();
    DropFromCache(BigFile());
    state.ResumeTiming();
    const int file = open(BigFile().c_str(), O_RDONLY);
    while (read(file, piece.data(), piece.size()) > 0) {
    }
    close(file);
  }
}

void Load(benchmark::State& state, bool fresh, bool cold) {
  SaveTo questions("");
  auto workbench = std::make_unique<Workbench>(questions);
  const double before = PeakMemory();
  ResetPeakMemory();
  double peak = 0;
  for (auto _ : state) {
    state.PauseTiming();
    if (fresh) {
      workbench = std::make_unique<Workbench>(questions);
    }
    if (cold) {
      DropFromCache(BigFile());
    }
    workbench->trial.FileName = BigFile();
    state.ResumeTiming();
    LoadFile(*workbench);
    peak = PeakMemory();
  }
  if (workbench->trial.NData != 1'000'000) {
    state.SkipWithError("not loaded");
  }
  state.counters["peak_MiB"] = peak;
  state.counters["matrix_MiB"] = 65e6 * 4 / 1048576;
  benchmark::DoNotOptimize(before);
}

void WriteAll(benchmark::State& state) {
  const std::string path = BenchPath("velmora2-bench-write");
  const std::vector<char> memory(std::filesystem::file_size(BigFile()), 1);
  for (auto _ : state) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    for (std::size_t done = 0; done < memory.size(); done += kPiece) {
      if (write(file, memory.data() + done, std::min(kPiece, memory.size() - done)) < 0) {
        state.SkipWithError("not written");
      }
    }
    fsync(file);
    close(file);
  }
  std::filesystem::remove(path);
}

void Save(benchmark::State& state) {
  const std::string path = BenchPath("velmora2-bench-save.vmb");
  SaveTo questions(path);
  Workbench workbench(questions);
  workbench.trial.FileName = BigFile();
  LoadFile(workbench);
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
    SaveData(workbench, SaveFormat::NativeBinary);
  }
  if (std::filesystem::file_size(path) != std::filesystem::file_size(BigFile())) {
    state.SkipWithError("not saved");
  }
  std::filesystem::remove(path);
}

BENCHMARK(ReadIntoWarmMemory)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Load, again, false, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Load, first, true, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CatCold)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK_CAPTURE(Load, cold, false, true)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(WriteAll)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(Save)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
}  // namespace velmora
