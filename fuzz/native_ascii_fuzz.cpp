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
  fuzz::Load load(data, size);
  load.trial.FileExt = size % 2 == 0 ? "VMA" : "VME";
  try {
    ReadNativeAscii(load.workbench, load.panel);
  } catch (const CommandAbandoned&) {
    return 0;  // the text parser asked again and again for what nobody answers
  }
  fuzz::ReachSamples(load.trial);
  return 0;
}
