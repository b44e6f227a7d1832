// Delimited text, 1,000,000 lines of 16 columns: the load through the command's route and the scan of
// its numbers, against a plain std::from_chars loop over the mapped file.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "bench_support.hpp"
#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/scan/core_scan.hpp"
#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"
#include "formats/line_blocks.hpp"
#include "import/load_file.hpp"

namespace velmora {
namespace {

constexpr int kColumns = 16;
constexpr std::int64_t kLines = 1'000'000;

/// The file, made once and removed at the end: numbers of 3 to 6 decimals as instruments write them.
class TextFile {
 public:
  TextFile()
      : path_(std::filesystem::temp_directory_path() /
              ("velmora2-bench-" + std::to_string(getpid()) + ".csv")) {
    std::mt19937_64 random(1);
    std::ofstream out(path_, std::ios::binary);
    std::string text;
    for (std::int64_t line = 0; line < kLines; ++line) {
      for (int c = 0; c < kColumns; ++c) {
        char cell[32];
        const double value =
            (static_cast<double>(random() % 2'000'001) - 1e6) / 1e3 / (c % 4 == 0 ? 1000 : 1);
        const int size =
            std::snprintf(cell, sizeof cell, "%.*f%c", 3 + c % 4, value, c + 1 < kColumns ? ',' : '\n');
        text.append(cell, static_cast<std::size_t>(size));
      }
      if (text.size() > 1'000'000) {
        out << text;
        text.clear();
      }
    }
    out << text;
  }
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;
  ~TextFile() { std::filesystem::remove(path_); }

  [[nodiscard]] std::string Path() const { return path_.string(); }
  [[nodiscard]] std::int64_t Bytes() const {
    return static_cast<std::int64_t>(std::filesystem::file_size(path_));
  }

 private:
  std::filesystem::path path_;
};

TextFile& SharedFile() {
  static TextFile file;
  return file;
}

/// Accepts the dialogue and answers the rate.
class Accepting : public Questions {
 public:
  Button AskBox(const Box& box) override { return box.buttons.front(); }
  std::string AskInput(const InputQuestion& /*question*/) override { return "1000"; }
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {}; }
  std::string AskPick(ChannelPicker& /*picker*/) override { return "Cancel"; }
  std::string AskForm(Form& /*form*/) override { return "OK"; }
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}
};

// The limit that people would write: no count of the records, no faults, memory already there.
void FromCharsOverMappedFile(benchmark::State& state) {
  TextFile& file = SharedFile();
  const auto bytes = static_cast<std::size_t>(file.Bytes());
  std::vector<float> values(static_cast<std::size_t>(kLines) * (kColumns + 1));
  for (auto _ : state) {
    const int descriptor = open(file.Path().c_str(), O_RDONLY | O_CLOEXEC);
    void* mapped = mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE, descriptor, 0);
    const char* at = static_cast<const char*>(mapped);
    float* to = values.data();
    for (std::int64_t line = 0; line < kLines; ++line, ++to) {
      for (int c = 0; c < kColumns; ++c) {
        at = std::from_chars(at, at + 64, *++to).ptr + 1;
      }
    }
    benchmark::DoNotOptimize(values.data());
    munmap(mapped, bytes);
    close(descriptor);
  }
  state.SetBytesProcessed(state.iterations() * file.Bytes());
}

// `again`: into the memory of the trial before, as the limit has its memory; else the program's first load.
void LoadText(benchmark::State& state, bool again) {
  TextFile& file = SharedFile();
  Accepting questions;
  Workbench workbench(questions);
  const auto load = [&] {
    workbench.trial.FileName = file.Path();
    LoadFile(workbench);
  };
  if (again) {
    load();
  }
  ResetPeakMemory();
  for (auto _ : state) {
    load();
  }
  state.counters["peak_MiB"] = PeakMemory();
  state.counters["matrix_MiB"] = static_cast<double>(kLines) * (kColumns + 1) * sizeof(float) / 1048576;
  if (workbench.trial.NData != kLines || workbench.trial.NChan != kColumns) {
    state.SkipWithError("not the whole file");
  }
  state.SetBytesProcessed(state.iterations() * file.Bytes());
}

constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr std::size_t kBlockForCores = std::size_t{8} << 20;

// Hands out the file in pieces of whole lines; `take` returns how many bytes it took.
template <typename Take>
void ForEachPiece(const Take& take, std::size_t block = kBlock) {
  TextSource source(SharedFile().Path());
  LineBlocks blocks(source, block);
  for (std::string_view lines = blocks.Lines(); !lines.empty(); lines = blocks.Lines()) {
    blocks.Consume(take(lines));
  }
}

template <typename Scan>
void ScanFile(std::vector<float>& values, const Scan& scan, std::size_t block = kBlock) {
  ScanPlan plan;
  plan.columns = kColumns;
  plan.stride = kColumns + 1;
  for (int c = 0; c < kColumns; ++c) {
    plan.slot[static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(c + 1);
  }
  std::int64_t rows = 0;
  ScanFaults faults;
  ForEachPiece(
      [&](std::string_view lines) {
        const FrameRoom room{values.data() + rows * plan.stride, kLines - rows};
        const ScanProgress done = scan(lines, plan, room, 1, faults);
        rows += done.rows;
        return done.bytes;
      },
      block);
  benchmark::DoNotOptimize(values.data());
}

void CountFile(SimdLevel level) {
  std::int64_t lines = 0;
  ForEachPiece([&](std::string_view text) {
    constexpr std::size_t kPiece = 16384;
    const FullLines full = CountFullLines(text.substr(0, kPiece), level);
    lines += full.lines;
    return full.lines > 0 ? full.bytes : text.size();
  });
  benchmark::DoNotOptimize(lines);
}

std::vector<float> RoomForAll() {
  return std::vector<float>(static_cast<std::size_t>(kLines) * (kColumns + 1));
}

void ScanPlain(benchmark::State& state) {
  std::vector<float> values = RoomForAll();
  for (auto _ : state) {
    ScanFile(values, ScanRows);
  }
  state.SetBytesProcessed(state.iterations() * SharedFile().Bytes());
}

// At each vector width; with `count` the two passes of a load.
void ScanFast(benchmark::State& state, bool count) {
  const auto level = static_cast<SimdLevel>(state.range(0));
  if (level > MachineSimdLevel()) {
    state.SkipWithError("not on this machine");
    return;
  }
  std::vector<float> values = RoomForAll();
  for (auto _ : state) {
    if (count) {
      CountFile(level);
    }
    ScanFile(values, [level](std::string_view text, const ScanPlan& plan, FrameRoom room,
                             std::int64_t firstLine, ScanFaults& faults) {
      return FastScanRows(text, plan, room, firstLine, faults, level);
    });
  }
  state.SetBytesProcessed(state.iterations() * SharedFile().Bytes());
}

// The two passes of a load, the second one on several cores: width and cores.
void ScanCores(benchmark::State& state) {
  const ScanMeans means = {.cores = static_cast<unsigned>(state.range(1)),
                           .level = static_cast<SimdLevel>(state.range(0))};
  if (means.level > MachineSimdLevel()) {
    state.SkipWithError("not on this machine");
    return;
  }
  std::vector<float> values = RoomForAll();
  for (auto _ : state) {
    CountFile(means.level);
    ScanFile(
        values,
        [means](std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                ScanFaults& faults) { return ScanOnCores(text, plan, room, firstLine, faults, means); },
        kBlockForCores);
  }
  state.SetBytesProcessed(state.iterations() * SharedFile().Bytes());
}

void ReadBytes(benchmark::State& state) {
  TextFile& file = SharedFile();
  std::vector<char> piece(std::size_t{256} << 10);
  for (auto _ : state) {
    TextSource source(file.Path());
    while (source.Read(piece.data(), piece.size()) > 0) {
      benchmark::DoNotOptimize(piece.data());
    }
  }
  state.SetBytesProcessed(state.iterations() * file.Bytes());
}

BENCHMARK(ReadBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(FromCharsOverMappedFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ScanPlain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanFast, alone, false)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanFast, counted, true)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(ScanCores)->ArgsProduct({{0, 1, 2}, {1, 2}})->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(LoadText, again, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(LoadText, first, false)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
