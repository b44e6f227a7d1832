#include <cstdlib>
#include <filesystem>

#include "core/files/files.hpp"
#include "core/workbench.hpp"
#include "formats/native_binary/native_binary_reader.hpp"
#include "formats/native_binary/native_binary_writer.hpp"
#include "fuzz_target.hpp"

namespace {

using namespace velmora;

/// Answers a save with one path.
class SaveTo : public fuzz::BlindAnswers {
 public:
  explicit SaveTo(std::string path) : path_(std::move(path)) {}
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {path_}; }

 private:
  std::string path_;
};

std::string SavedTrial(int channels, int samples) {
  std::string directory = (std::filesystem::temp_directory_path() / "velmora2-fuzz-XXXXXX").string();
  if (mkdtemp(directory.data()) == nullptr) {
    std::abort();
  }
  SaveTo answers(directory + "/seed.vmb");
  Workbench workbench(answers);
  workbench.trial.Rate = 100.0;
  workbench.trial.AllocateData(channels, samples);
  workbench.trial.CursorHi = samples;
  ProgressPanel panel(workbench);
  WriteNativeBinary(workbench, panel);
  const InputFile file(workbench.OutputFileName);
  std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
  file.ReadAt(0, bytes.data(), bytes.size());
  std::filesystem::remove_all(directory);
  return bytes;
}

}  // namespace

std::vector<std::string> FuzzSeeds() {
  return {SavedTrial(1, 1), SavedTrial(3, 40), SavedTrial(64, 5), SavedTrial(3, 40).substr(80)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Load load(data, size);
  ReadNativeBinary(load.workbench, load.panel);
  fuzz::ReachSamples(load.trial);
  return 0;
}
