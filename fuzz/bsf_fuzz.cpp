#include "formats/amti/bsf_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/plate_files.hpp"

std::vector<std::string> FuzzSeeds() {
  using namespace velmora::test;
  return {BsfFileBytes{}.Bytes(), BsfFileBytes{.version = 100, .plates = 2}.Bytes()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenBsf, data, size);
}
