#include "commands/small_trials.hpp"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "app/command_table.hpp"
#include "commands/own_place.hpp"
#include "core/workbench.hpp"
#include "fuzz_target.hpp"
#include "support/instrument_files/c3d_file.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::fuzz {
namespace {

enum class Samples { Wave, Zeros, Huge, Gaps };

struct Shape {
  int channels;
  int samples;
  double rate = 100.0;
  Samples kind = Samples::Wave;
  std::string_view after{};  // a command that is run before the trial is saved
};

constexpr std::array kShapes = {
    Shape{3, 100},
    Shape{2, 300, 1000.0},
    Shape{1, 1},
    Shape{2, 2},
    Shape{3, 5, 50.0},
    Shape{6, 2000, 1000.0},
    Shape{16, 400, 500.0},
    Shape{64, 40},
    Shape{3, 101, 100.0, Samples::Wave, "timebase.percentage"},
    Shape{2, 50, 25.0, Samples::Wave, "timebase.frames"},
    Shape{4, 300, 100.0, Samples::Zeros},
    Shape{3, 200, 100.0, Samples::Huge},
    Shape{3, 200, 100.0, Samples::Gaps},
    Shape{2, 60, 0.1},
    Shape{3, 100, 0.0},
};

/// Answers a save with one path.
class SaveTo : public BlindAnswers {
 public:
  explicit SaveTo(std::string path) : path_(std::move(path)) {}
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {path_}; }

 private:
  std::string path_;
};

// Two tones and noise, under a load that comes and goes: something for thresholds, spectra and contacts.
float WaveAt(int c, int i) {
  const std::uint32_t scrambled = static_cast<std::uint32_t>(i * 65 + c) * 2654435761U;
  const double noise = static_cast<double>(scrambled >> 8) / 0x1p24 - 0.5;
  const double load = i / 50 % 2 == 1 ? 100.0 * c : 0.0;
  return static_cast<float>(load + std::sin(0.05 * c * i) + 0.3 * std::cos(0.7 * i) + noise);
}

float SampleAt(Samples kind, int c, int i) {
  if (kind == Samples::Huge) {
    return 3e38F * static_cast<float>(std::sin(c * i));
  }
  if (kind == Samples::Gaps && i / 20 % 3 == c) {
    return std::numeric_limits<float>::quiet_NaN();
  }
  return kind == Samples::Zeros ? 0.0F : WaveAt(c, i);
}

void NameChannel(Trial& trial, int c) {
  static constexpr std::array<const char*, 8> kLoads = {"Fx", "Fy", "Fz", "Mx", "My", "Mz", "EMG", "EMG"};
  static constexpr std::array<const char*, 8> kUnits = {"N", "N", "N", "N.m", "N.m", "N.m", "mV", "µV"};
  const int k = (c - 1) % 8;
  trial.SetChannelDefaults(c);
  if (trial.NChan % 2 == 0) {  // others keep the names that readers give
    trial.ChanLabel[c] = kLoads.at(static_cast<std::size_t>(k)) + (c > 6 ? " " + std::to_string(c) : "");
    trial.ChanUnits[c] = kUnits.at(static_cast<std::size_t>(k));
  }
  trial.ChanRate[c] = c % 4 == 3 ? trial.Rate / 2 : trial.Rate;
}

void Fill(Trial& trial, const Shape& shape) {
  trial.Rate = shape.rate;
  trial.AllocateData(shape.channels, shape.samples);
  trial.SetChannelDefaults(0);
  trial.RebuildTimeColumn();
  trial.Duration = shape.rate > 0 ? (shape.samples - 1) / shape.rate : 0.0;
  trial.CursorHi = shape.samples;
  for (int c = 1; c <= shape.channels; ++c) {
    NameChannel(trial, c);
    for (int i = 1; i <= shape.samples; ++i) {
      trial.Data(i, c) = SampleAt(shape.kind, c, i);
    }
  }
}

SmallTrial Saved(const Shape& shape, const OwnPlace& place) {
  SaveTo answers(place.Path("trial.vmb"));
  Workbench workbench(answers);
  Fill(workbench.trial, shape);
  if (const Command* command = FindCommand(shape.after)) {
    RunCommand(workbench, *command);
  }
  RunCommand(workbench, *FindCommand("save.vmb"));
  return {".vmb", test::ReadFile(place.Path("trial.vmb"))};
}

std::vector<SmallTrial> MakeAll() {
  const OwnPlace place("making");
  std::vector<SmallTrial> all;
  for (const Shape& shape : kShapes) {
    all.push_back(Saved(shape, place));
  }
  SmallTrial empty = all.front();
  constexpr std::size_t samplesAt = 182;  // their number, 32 bits
  empty.bytes.replace(samplesAt, 4, 4, '\0');
  all.push_back(empty);
  test::C3dFile plates = test::FullC3dFile();
  test::AddUsualParameters(plates);
  all.push_back({".c3d", plates.Bytes()});
  return all;
}

}  // namespace

const std::vector<SmallTrial>& SmallTrials() {
  static const std::vector<SmallTrial> all = MakeAll();
  return all;
}

}  // namespace velmora::fuzz
