// Loading instruments' files against read() of the same bytes into warm memory; a .anc file against its rows
// as plain text. Files come from the page cache.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <hdf5.h>
#include <matio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench_support.hpp"
#include "import/load_file.hpp"
#include "support/instrument_files/c3d_file.hpp"
#include "support/instrument_files/edf_file.hpp"
#include "support/instrument_files/tdms_file.hpp"
#include "support/instrument_files/wav_file.hpp"

namespace velmora {
namespace {

/// Takes what every dialogue offers.
class AcceptAll : public SaveTo {
 public:
  AcceptAll() : SaveTo("", Button::Yes) {}
  std::string AskForm(Form& /*form*/) override { return "OK"; }
  std::string AskInput(const InputQuestion& /*question*/) override { return "1000"; }
};

std::string C3d(bool floats, int points, int channels) {
  test::C3dFile file;
  file.floats = floats;
  file.points = points;
  file.channels = channels;
  file.frames = 50'000;
  return file.Bytes();
}

std::string Edf() {
  test::EdfFile file;
  file.records = 600;
  file.promised = "600";
  file.signals.assign(32, {.label = "EMG", .samples = 1000});
  return file.Bytes();
}

std::string Wav(bool floats) {
  test::WavFileBytes file;
  file.channels = 16;
  file.tag = floats ? 3 : 1;
  file.bits = floats ? 32 : 16;
  ByteBuilder samples;
  for (int i = 0; i < 16'000'000; ++i) {
    if (floats) {
      samples.Add(static_cast<float>(i % 4001) / 7.0F);
    } else {
      samples.Add(static_cast<std::int16_t>(i % 4001));
    }
  }
  file.samples = samples.Bytes();
  return file.Bytes();
}

// 63 channels, so that the rows with their times are 64 columns, which the parser takes.
std::string AncRows() {
  std::string rows;
  for (int i = 0; i < 100'000; ++i) {
    rows += std::to_string(i / 1000.0);
    for (int c = 0; c < 63; ++c) {
      rows += "\t" + std::to_string((i * 37 + c * 101) % 4096 - 2048);
    }
    rows += "\r\n";
  }
  return rows;
}

std::string Anc() {
  std::string head =
      "File_Type:\tAnalog R/C ASCII\tGeneration#:\t2\r\nBoard_Type:\tX\tPolarity:\tBipolar\r\n";
  head += "BitDepth:\t12\tPreciseRate:\t1000\r\nName";
  std::string ranges = "Range";
  for (int c = 0; c < 63; ++c) {
    head += "\tChannel " + std::to_string(c);
    ranges += "\t5000";
  }
  return head + "\r\n" + ranges + "\r\n" + AncRows();
}

// A .sto of 16 columns besides the times.
std::string Table() {
  std::string text = "bench\nversion=1\nnRows=100000\nnColumns=17\ninDegrees=no\nendheader\ntime";
  for (int c = 0; c < 16; ++c) {
    text += "\tforce" + std::to_string(c);
  }
  text += "\n";
  for (int i = 0; i < 100'000; ++i) {
    text += std::to_string(i / 1000.0);
    for (int c = 0; c < 16; ++c) {
      text += "\t" + std::to_string((i * 37 + c * 101) % 4096 / 16.0);
    }
    text += "\n";
  }
  return text;
}

// Counts of 16 bits, 1,000 of a channel behind those of the one before.
std::string Tdms() {
  constexpr std::int16_t kChannels = 16;
  constexpr std::int16_t kChunk = 1000;
  constexpr std::uint32_t kInt16 = 2;
  test::TdmsBuilder file;
  file.Object("/", "").Object("/'card'", "");
  for (int c = 0; c < kChannels; ++c) {
    file.Object("/'card'/'" + std::to_string(c) + "'", file.Index(kInt16, kChunk),
                file.Property("wf_increment", 0.001), 1);
  }
  ByteBuilder raw;
  for (int k = 0; k < 1'000 * kChannels * kChunk; ++k) {
    raw.Add(static_cast<std::int16_t>(k % 4001));
  }
  return file.Segment(raw.Bytes()).Bytes();
}

constexpr std::size_t kLong = 1'000'000;  // samples of the matrices

void WriteMat(const std::string& path) {
  mat_t* file = Mat_CreateVer(path.c_str(), nullptr, MAT_FT_MAT5);
  std::array<std::size_t, 2> sizes = {kLong, 16};
  std::vector<double> values(kLong * 16);
  for (std::size_t k = 0; k < values.size(); ++k) {
    values[k] = static_cast<double>(k % 4001) / 8;
  }
  matvar_t* variable = Mat_VarCreate("emg", MAT_C_DOUBLE, MAT_T_DOUBLE, 2, sizes.data(), values.data(), 0);
  Mat_VarWrite(file, variable, MAT_COMPRESSION_NONE);
  Mat_VarFree(variable);
  Mat_Close(file);
}

// As OpenSignals lays it out.
void WriteHdf5(const std::string& path) {
  const hid_t file = H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
  for (const char* group : {"/device", "/device/raw"}) {
    H5Gclose(H5Gcreate2(file, group, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  }
  std::vector<std::uint16_t> values(kLong);
  for (std::size_t k = 0; k < kLong; ++k) {
    values[k] = static_cast<std::uint16_t>(k % 4001);
  }
  const std::array<hsize_t, 2> sizes = {kLong, 1};
  const hid_t space = H5Screate_simple(2, sizes.data(), nullptr);
  for (int c = 1; c <= 16; ++c) {
    const std::string name = "/device/raw/channel_" + std::to_string(c);
    const hid_t set =
        H5Dcreate2(file, name.c_str(), H5T_STD_U16LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    H5Dwrite(set, H5T_NATIVE_UINT16, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
    H5Dclose(set);
  }
  H5Sclose(space);
  H5Fclose(file);
}

struct Kind {
  const char* file;
  std::function<void(const std::string& path)> write;
};

// Of a format whose file is made as bytes.
std::function<void(const std::string&)> Bytes(const std::function<std::string()>& make) {
  return [make](const std::string& path) { std::ofstream(path, std::ios::binary) << make(); };
}

const std::map<std::string, Kind>& Kinds() {
  static const std::map<std::string, Kind> kinds = {
      {"c3d_float_64x200k", {"velmora2-bench-float.c3d", Bytes([] { return C3d(true, 0, 64); })}},
      {"c3d_int16_64x200k", {"velmora2-bench-int.c3d", Bytes([] { return C3d(false, 0, 64); })}},
      {"c3d_50_points_16x200k", {"velmora2-bench-points.c3d", Bytes([] { return C3d(true, 50, 16); })}},
      {"edf_32x600k", {"velmora2-bench.edf", Bytes(Edf)}},
      {"wav_float_16x1M", {"velmora2-bench-float.wav", Bytes([] { return Wav(true); })}},
      {"wav_int16_16x1M", {"velmora2-bench-int.wav", Bytes([] { return Wav(false); })}},
      {"anc_63x100k", {"velmora2-bench.anc", Bytes(Anc)}},
      {"anc_rows_as_text", {"velmora2-bench-rows.tab", Bytes(AncRows)}},
      {"sto_16x100k", {"velmora2-bench.sto", Bytes(Table)}},
      {"tdms_int16_16x1M", {"velmora2-bench.tdms", Bytes(Tdms)}},
      {"mat_double_16x1M", {"velmora2-bench.mat", WriteMat}},
      {"hdf5_uint16_16x1M", {"velmora2-bench.h5", WriteHdf5}},
  };
  return kinds;
}

std::string FileOf(const std::string& name) {
  const Kind& kind = Kinds().at(name);
  std::string path = BenchPath(kind.file);
  if (!std::filesystem::exists(path)) {
    kind.write(path);
  }
  return path;
}

void ReadBytes(benchmark::State& state, const std::string& name) {
  const std::string path = FileOf(name);
  std::vector<char> memory(std::filesystem::file_size(path), 1);
  for (auto _ : state) {
    const int file = open(path.c_str(), O_RDONLY);
    std::size_t done = 0;
    for (ssize_t got = 1; got > 0; done += static_cast<std::size_t>(got)) {
      got = read(file, memory.data() + done, std::min(std::size_t{1} << 20, memory.size() - done));
    }
    close(file);
    benchmark::DoNotOptimize(memory.data());
  }
}

void Load(benchmark::State& state, const std::string& name) {
  const std::string path = FileOf(name);
  AcceptAll answers;
  Workbench workbench(answers);
  for (auto _ : state) {
    workbench.trial.FileName = path;
    LoadFile(workbench);
  }
  if (workbench.trial.NData < 100'000) {
    state.SkipWithError("not loaded");
  }
}

const bool registered = [] {
  for (const auto& [name, kind] : Kinds()) {
    const std::string file = name;
    benchmark::RegisterBenchmark(("read/" + name).c_str(),
                                 [file](benchmark::State& state) { ReadBytes(state, file); })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
    benchmark::RegisterBenchmark(("load/" + name).c_str(),
                                 [file](benchmark::State& state) { Load(state, file); })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
  }
  return true;
}();

}  // namespace
}  // namespace velmora
