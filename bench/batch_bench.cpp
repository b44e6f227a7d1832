// The runner over many small trials (3 channels x 1000 samples: load, filter, save), held against the same
// commands in one process without isolation:
//   batch_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=5
// VELMORA_BENCH_TRIALS sets how many (10,000); VELMORA_BENCH_DIR where, best in memory: every save is brought
// to disk.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/command_table.hpp"
#include "bench_support.hpp"
#include "run/batch/arguments.hpp"
#include "run/batch/batch.hpp"
#include "run/recipe/recipe_run.hpp"
#include "run_program.hpp"

namespace velmora {
namespace {

constexpr const char* kRecipe = R"(velmora2: 1
steps:
  - do: file.load
    file: "${input}"
  - do: analysis.low-pass
    answers:
      - pick: {values: {"*": 10}}
  - do: save.vmb
    answers:
      - file: "${out}/${stem}.vmb"
)";

/// The study on disk, made once.
struct Study {
  Study() {
    const char* asked = std::getenv("VELMORA_BENCH_TRIALS");
    const int count = asked != nullptr ? std::atoi(asked) : 10000;
    directory = BenchPath("velmora2-batch-bench");
    std::filesystem::create_directories(directory + "/out");
    std::ofstream(directory + "/r.yaml") << kRecipe;
    std::ofstream list(directory + "/inputs");
    const std::string first = directory + "/t0.vmb";
    SaveTo save(first);
    Workbench workbench(save);
    Trial& trial = workbench.trial;
    trial.AllocateData(3, 1000);
    trial.Rate = 1000.0;
    trial.Duration = 0.999;
    for (int c = 1; c <= 3; ++c) {
      trial.SetChannelDefaults(c);
      for (int i = 1; i <= 1000; ++i) {
        trial.Data(i, c) = static_cast<float>(std::sin(0.01 * i * c));
      }
    }
    trial.RebuildTimeColumn();
    RunCommand(workbench, *FindCommand("save.vmb"));
    for (int i = 0; i < count; ++i) {
      inputs.push_back(directory + "/t" + std::to_string(i) + ".vmb");
      list << inputs.back() << '\n';
      if (i > 0) {
        std::filesystem::copy_file(first, inputs.back(), std::filesystem::copy_options::overwrite_existing);
      }
    }
  }
  Study(const Study&) = delete;
  Study& operator=(const Study&) = delete;
  ~Study() { std::filesystem::remove_all(directory); }

  std::string directory;
  std::vector<std::string> inputs;
};

const Study& TheStudy() {
  static const Study study;
  return study;
}

void BM_OneProcess(benchmark::State& state) {
  const Study& study = TheStudy();
  Arguments arguments;
  arguments.recipe = study.directory + "/r.yaml";
  arguments.inputs = study.inputs;
  arguments.out = study.directory + "/out";
  for (auto _ : state) {
    for (std::size_t run = 0; run < study.inputs.size(); ++run) {
      RecipeRun one({.input = study.inputs[run]});
      if (one.Run(RecipeFor(arguments, kRecipe, run)).failure) {
        std::abort();
      }
    }
  }
}

void BM_Runner(benchmark::State& state) {
  const Study& study = TheStudy();
  std::vector<std::string> command = {
      VELMORA2_RUN, study.directory + "/r.yaml", "--inputs", study.directory + "/inputs",
      "--out",      study.directory + "/out",    "--jobs",   std::to_string(state.range(0))};
  if (state.range(1) != 0) {
    command.insert(command.end(), {"--manifest", study.directory + "/m.json"});
  }
  for (auto _ : state) {
    bench::RunToEnd(command);
  }
}

BENCHMARK(BM_OneProcess)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Runner)->Args({1, 0})->Args({2, 0})->Args({1, 1})->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
