#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include "core/questions/questions.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Answers the questions of a save: every box with one button, every file with one path.
class SaveTo : public Questions {
 public:
  explicit SaveTo(std::string path, Button answer = Button::OK) : path_(std::move(path)), answer_(answer) {}
  Button AskBox(const Box& /*box*/) override { return answer_; }
  std::string AskInput(const InputQuestion& /*question*/) override { return {}; }
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {path_}; }
  std::string AskPick(ChannelPicker& /*picker*/) override { return "Cancel"; }
  std::string AskForm(Form& /*form*/) override { return "Cancel"; }
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}

 private:
  std::string path_;
  Button answer_;
};

/// Channels 1 to `count`.
inline ChannelList ChannelsTo(int count) {
  ChannelList all(static_cast<std::size_t>(count));
  std::iota(all.begin(), all.end(), 1);
  return all;
}

/// A file of a benchmark, in VELMORA_BENCH_DIR where that is set.
inline std::string BenchPath(const char* name) {
  const char* directory = std::getenv("VELMORA_BENCH_DIR");
  return (directory != nullptr ? std::filesystem::path(directory) : std::filesystem::temp_directory_path()) /
         name;
}

/// How far the memory in use ever went, in MiB.
inline double PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) {
      return std::strtod(line.c_str() + 6, nullptr) / 1024;
    }
  }
  return 0;
}

inline void ResetPeakMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

}  // namespace velmora
