#include "formats/motion_analysis/anb_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/motion_analysis_file.hpp"

std::vector<std::string> FuzzSeeds() {
  return {velmora::test::MotionAnalysisFile{}.Binary()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenAnb, data, size);
}
