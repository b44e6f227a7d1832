#include "formats/c3d/c3d_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/c3d_file.hpp"

std::vector<std::string> FuzzSeeds() {
  using namespace velmora;
  std::vector<std::string> seeds;
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big, ByteOrder::Vax}) {
    for (const bool floats : {false, true}) {
      test::C3dFile file = test::FullC3dFile();
      file.order = order;
      file.floats = floats;
      test::AddUsualParameters(file);
      seeds.push_back(file.Bytes());
    }
  }
  test::C3dFile points;
  points.channels = 0;
  seeds.push_back(points.Bytes());
  return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenC3d, data, size);
}
