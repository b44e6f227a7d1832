#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/questions/progress.hpp"
#include "core/questions/questions.hpp"
#include "core/workbench.hpp"

/// Reads the bytes as its format; any crash, sanitizer report or broken promise (abort) is a finding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Small valid files to start from.
std::vector<std::string> FuzzSeeds();

namespace velmora::fuzz {

/// Bytes as a file with a path, without a disk.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size);
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile();

  [[nodiscard]] std::string Path() const;

 private:
  int descriptor_;
};

/// Answers whatever is asked without anybody there: the first button, no text, no file, the accepting
/// button. Gives up a command that never stops asking.
class BlindAnswers : public Questions {
 public:
  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}

 private:
  void Count();

  int asked_ = 0;
};

/// A program that is about to read the bytes as the file of its trial.
template <typename Answers = BlindAnswers>
struct Load {
  /// `choices` make the answers.
  template <typename... Choices>
  Load(const std::uint8_t* data, std::size_t size, Choices... choices)
      : file(data, size), answers(choices...) {
    trial.FileName = file.Path();
  }

  MemoryFile file;
  Answers answers;
  Workbench workbench{answers};
  Trial& trial = workbench.trial;
  ProgressPanel panel{workbench};
};

/// A trial must hold the samples that it counts: the first and the last of every channel are reached.
void ReachSamples(const Trial& trial);

/// The same of all samples, each of which must be a finite number.
void WantNumbers(const Trial& trial);

}  // namespace velmora::fuzz
