#include "fuzz_target.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>

namespace velmora::fuzz {

MemoryFile::MemoryFile(const std::uint8_t* data, std::size_t size)
    : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
  if (descriptor_ < 0 || write(descriptor_, data, size) != static_cast<ssize_t>(size)) {
    std::abort();
  }
}

MemoryFile::~MemoryFile() {
  close(descriptor_);
}

std::string MemoryFile::Path() const {
  return "/proc/self/fd/" + std::to_string(descriptor_);
}

void BlindAnswers::Count() {
  constexpr int mostQuestions = 50;
  if (++asked_ > mostQuestions) {
    throw CommandAbandoned("too many questions");
  }
}

Button BlindAnswers::AskBox(const Box& box) {
  Count();
  return box.buttons.front();
}

std::string BlindAnswers::AskInput(const InputQuestion& question) {
  Count();
  return question.defaultText;
}

std::vector<std::string> BlindAnswers::AskFile(const FileQuestion& /*question*/) {
  Count();
  return {};
}

std::string BlindAnswers::AskPick(ChannelPicker& /*picker*/) {
  Count();
  return "OK";
}

std::string BlindAnswers::AskForm(Form& /*form*/) {
  Count();
  return "OK";
}

void ReachSamples(const Trial& trial) {
  for (int c = 0; trial.NData > 0 && c <= trial.NChan; ++c) {
    static_cast<void>(trial.Data(1, c) + trial.Data(trial.NData, c));
  }
}

void WantNumbers(const Trial& trial) {
  for (int c = 0; trial.NData > 0 && c <= trial.NChan; ++c) {
    for (std::int64_t i = 1; i <= trial.NData; ++i) {
      if (!std::isfinite(trial.Data(i, c))) {
        std::abort();
      }
    }
  }
}

}  // namespace velmora::fuzz
