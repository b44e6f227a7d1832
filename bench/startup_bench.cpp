// Start of the runner, held against a C++ program that does nothing:
//   startup_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=9
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

extern char** environ;

namespace {

/// Starts a program with its output thrown away and waits for its end.
void RunToEnd(const std::vector<std::string>& command) {
  std::vector<char*> argv;
  for (const std::string& word : command) {
    argv.push_back(const_cast<char*>(word.c_str()));
  }
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int status = 1;
  if (posix_spawn(&process, argv[0], &actions, nullptr, argv.data(), environ) != 0 ||
      waitpid(process, &status, 0) < 0 || status != 0) {
    std::abort();
  }
  posix_spawn_file_actions_destroy(&actions);
}

/// A small trial, made once.
std::string SampleTrial() {
  static const std::string directory = [] {
    std::string name = (std::filesystem::temp_directory_path() / "velmora2-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      std::abort();
    }
    RunToEnd({VELMORA2_MAKE_EXAMPLES, name});
    std::atexit([] { std::filesystem::remove_all(directory); });
    return name;
  }();
  return directory + "/noisy-displacement.vmb";
}

void BM_EmptyProgram(benchmark::State& state) {
  for (auto _ : state) {
    RunToEnd({EMPTY_PROGRAM});
  }
}

void BM_InfoOfSmallFile(benchmark::State& state) {
  const std::string trial = SampleTrial();
  for (auto _ : state) {
    RunToEnd({VELMORA2_RUN, "--info", trial});
  }
}

BENCHMARK(BM_EmptyProgram)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_InfoOfSmallFile)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
