// Start of the runner, held against a C++ program that does nothing:
//   startup_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=9
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "run_program.hpp"

namespace {

/// A small trial, made once.
std::string SampleTrial() {
  static const std::string directory = [] {
    std::string name = (std::filesystem::temp_directory_path() / "velmora2-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      std::abort();
    }
    velmora::bench::RunToEnd({VELMORA2_MAKE_EXAMPLES, name});
    std::atexit([] { std::filesystem::remove_all(directory); });
    return name;
  }();
  return directory + "/noisy-displacement.vmb";
}

void BM_EmptyProgram(benchmark::State& state) {
  for (auto _ : state) {
    velmora::bench::RunToEnd({EMPTY_PROGRAM});
  }
}

void BM_InfoOfSmallFile(benchmark::State& state) {
  const std::string trial = SampleTrial();
  for (auto _ : state) {
    velmora::bench::RunToEnd({VELMORA2_RUN, "--info", trial});
  }
}

BENCHMARK(BM_EmptyProgram)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_InfoOfSmallFile)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
