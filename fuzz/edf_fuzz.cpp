#include "formats/edf/edf_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/edf_file.hpp"

std::vector<std::string> FuzzSeeds() {
  velmora::test::EdfFile plain;
  velmora::test::EdfFile rates;
  rates.isBdf = true;
  rates.reserved = "BDF+D";
  rates.signals[1].samples = 1;
  rates.signals.push_back(
      {.label = "BDF Annotations", .samples = 20, .annotations = velmora::test::UsualAnnotations()});
  return {plain.Bytes(), rates.Bytes()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenEdf, data, size);
}
