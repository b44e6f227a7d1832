#include "formats/native_ascii/native_ascii_reader.hpp"
#include "fuzz_target.hpp"

using namespace velmora;

namespace {

std::string File(const std::string& extra) {
  return "* a.vma\r\n* b.dat\r\n* 42 title\r\n*  250.000     0.0120\r\n*        0         " + extra +
         "\r\n* Channel:        00        07        12\r\n* Time    Fx        Fy        Fz\r\n"
         "*  250.000   250.000   250.000   250.000\r\n"
         "    0.0000    1.5000   -2.0000    0.1250\r\n    0.0040    2.5000-1234.5678    0.1250\r\n";
}

}  // namespace

std::vector<std::string> FuzzSeeds() {
  return {File("1"), File("2147483647"), File("1") + "\n\r\n\r", File("9999").substr(0, 200)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::MemoryFile file(data, size);
  fuzz::BlindAnswers answers;
  Workbench workbench(answers);
  Trial& trial = workbench.trial;
  trial.FileName = file.Path();
  trial.FileExt = size % 2 == 0 ? "VMA" : "VME";
  ProgressPanel panel(workbench);
  try {
    ReadNativeAscii(workbench, panel);
  } catch (const CommandAbandoned&) {
    return 0;  // the text parser asked again and again for what nobody answers
  }
  if (trial.NData > 0) {
    for (int c = 0; c <= trial.NChan; ++c) {
      static_cast<void>(trial.Data(1, c) + trial.Data(trial.NData, c));
    }
  }
  return 0;
}
