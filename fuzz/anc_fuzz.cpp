#include "formats/motion_analysis/anc_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/motion_analysis_file.hpp"

std::vector<std::string> FuzzSeeds() {
  return {velmora::test::MotionAnalysisFile{}.Text()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenAnc, data, size);
}
