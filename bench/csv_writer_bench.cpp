// Saving a trial of 1,000,000 x 16 as .csv, against printf and the standard library for each value;
// all through the same output file, bytes equal.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#include "bench_support.hpp"
#include "core/files/files.hpp"
#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "export/save_data.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 16;
constexpr std::int32_t kSamples = 1000000;

struct Saved {
  std::string path = BenchPath("velmora2-bench.csv");
  SaveTo answers{path, Button::No};  // neither labels nor times
  Workbench workbench{answers};

  Saved() {
    Trial& trial = workbench.trial;
    trial.Rate = 1000.0;
    trial.AllocateData(kChannels, kSamples);
    std::mt19937 random(1);
    std::normal_distribution<float> noise(0.0F, 2.5F);
    for (std::int32_t i = 1; i <= kSamples; ++i) {
      for (int c = 1; c <= kChannels; ++c) {
        trial.matrix.Frame(i)[c] = noise(random);
      }
    }
  }
  Saved(const Saved&) = delete;
  Saved& operator=(const Saved&) = delete;
  ~Saved() { std::filesystem::remove(path); }
};

Saved& TheTrial() {
  static Saved saved;
  return saved;
}

template <typename PutValue>
void WriteByValue(PutValue put) {
  const Trial& trial = TheTrial().workbench.trial;
  OutputFile file(TheTrial().path);
  std::string block;
  for (std::int32_t i = 1; i <= kSamples; ++i) {
    for (int c = 1; c <= kChannels; ++c) {
      char text[64];
      block.append(text, put(text, trial.matrix.Frame(i)[c]));
      block.append(c < kChannels ? ", " : "\n");
    }
    if (block.size() > 200000) {
      file.Write(block);
      block.clear();
    }
  }
  file.Write(block);
  file.Commit();
}

void Printf(benchmark::State& state) {
  for (auto _ : state) {
    WriteByValue([](char* text, float value) {
      return static_cast<std::size_t>(std::snprintf(text, 64, "%.9g", static_cast<double>(value)));
    });
  }
}

void ToChars(benchmark::State& state) {
  for (auto _ : state) {
    WriteByValue([](char* text, float value) {
      return static_cast<std::size_t>(std::to_chars(text, text + 64, value).ptr - text);
    });
  }
}

void SaveCsv(benchmark::State& state) {
  for (auto _ : state) {
    SaveData(TheTrial().workbench, SaveFormat::CommaSeparated);
  }
}

void SavePrn(benchmark::State& state) {
  for (auto _ : state) {
    SaveData(TheTrial().workbench, SaveFormat::SpaceDelimited);
  }
}

BENCHMARK(Printf)->Unit(benchmark::kMillisecond);
BENCHMARK(ToChars)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveCsv)->Unit(benchmark::kMillisecond);
BENCHMARK(SavePrn)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
