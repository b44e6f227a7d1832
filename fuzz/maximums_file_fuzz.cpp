#include "emg/maximums/stored_maximums.hpp"
#include "fuzz_target.hpp"

using namespace velmora;

namespace {

std::vector<StoredMaximum> TwoMaximums() {
  return {{.Channel = 1,
           .Label = "Vastus lat",
           .Units = "mV",
           .Maximum = 0.5,
           .Time = 1.25,
           .Method = "RMS of a window",
           .Window = 0.5,
           .File = "a.vmb"},
          {.Channel = 2,
           .Label = "Biceps \"fem\"",
           .Units = "mV",
           .Maximum = 1e-30,
           .Time = 0.0,
           .Method = "Mean",
           .Window = 0.1,
           .File = ""}};
}

std::string TextOf(const std::vector<StoredMaximum>& maximums) {
  fuzz::BlindAnswers answers;
  const Workbench workbench(answers);
  return MaximumFileText(workbench, maximums);
}

}  // namespace

std::vector<std::string> FuzzSeeds() {
  const std::string text = TextOf(TwoMaximums());
  return {text, text.substr(0, text.size() / 2), TextOf({})};
}

// What was read once is what its own file reads as.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::MemoryFile file(data, size);
  if (const auto read = ReadMaximums(file.Path())) {
    const std::string text = TextOf(*read);
    const fuzz::MemoryFile again(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    const auto back = ReadMaximums(again.Path());
    if (!back || back->size() != read->size()) {
      std::abort();
    }
  }
  return 0;
}
