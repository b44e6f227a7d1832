#include "formats/units_file/units_file_reader.hpp"
#include "fuzz_target.hpp"

using namespace velmora;

namespace {

/// Answers the command's question for its file.
class OpenFile : public fuzz::BlindAnswers {
 public:
  explicit OpenFile(std::string path) : path_(std::move(path)) {}
  std::vector<std::string> AskFile(const FileQuestion& /*question*/) override { return {path_}; }

 private:
  std::string path_;
};

}  // namespace

std::vector<std::string> FuzzSeeds() {
  const std::string head =
      "Velmora2 Labels, units and factors: x.vmb\nNumber of channels: 03\n"
      "Channels: \tLabels    \tUnits     \tScaling\tLo.cuts\tHi.cuts\tThresholds\n";
  return {
      head + "Abscissa:\tTime\ts\n00:\tA\tV\t1\t2\t3\t4\n01:\tB\tN\t0\t0\t0\t0\n02:\tC\tV\t-1e10\t0\t0\t0\n",
      "Velmora2 Units\r\nNumber of channels: 3\r\nheads\r\nmore\r\nAbscissa: Time  s\r\n"
      "00:       Heel left  m/s        1.5  20 450\r\n01:\r\n02: x\r\n"};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::MemoryFile file(data, size);
  OpenFile answers(file.Path());
  Workbench workbench(answers);
  workbench.trial.AllocateData(3, 2);
  ReadUnitsFile(workbench);
  for (const Label& label : workbench.trial.ChanLabel) {
    if (CharacterCount(label.Text()) > Label::kLength) {
      std::abort();
    }
  }
  return 0;
}
