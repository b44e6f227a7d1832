#include "formats/delsys/delsys_emg_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/plate_files.hpp"

std::vector<std::string> FuzzSeeds() {
  return {velmora::test::DelsysEmgBytes(3), velmora::test::DelsysEmgBytes(4)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenDelsysEmg, data, size);
}
