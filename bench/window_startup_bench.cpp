// Start of the window up to its first picture, held against an empty window of Qt. Both are started by
// turns; the last line is the ratio of their medians. Without QT_QPA_PLATFORM nothing is shown anywhere.
//   window_startup_bench [ROUNDS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "run_program.hpp"

namespace {

double Milliseconds(const char* program) {
  const auto start = std::chrono::steady_clock::now();
  velmora::bench::RunToEnd({program});
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = std::max(1, argc > 1 ? std::atoi(argv[1]) : 21);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("QT_LOGGING_RULES", "*=false", 1);
  Milliseconds(EMPTY_WINDOW);  // files come into the system's cache
  Milliseconds(FIRST_WINDOW);
  std::vector<double> empty;
  std::vector<double> ours;
  for (int k = 0; k < rounds; ++k) {
    empty.push_back(Milliseconds(EMPTY_WINDOW));
    ours.push_back(Milliseconds(FIRST_WINDOW));
  }
  std::printf("empty window      %8.1f ms (median of %d)\n", Median(empty), rounds);
  std::printf("window of velmora2 %7.1f ms\n", Median(ours));
  std::printf("ratio             %8.2f\n", Median(ours) / Median(empty));
}
