#include "formats/wav/wav_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/wav_file.hpp"

std::vector<std::string> FuzzSeeds() {
  using namespace velmora::test;
  std::vector<std::string> seeds;
  for (const int bits : {8, 16, 24, 32, 40, 64}) {
    WavFileBytes file = UsualWavFile();
    file.bits = bits;
    file.texts = "a comment ";
    file.samples = std::string(240, 'a');
    seeds.push_back(file.Bytes());
  }
  WavFileBytes other = UsualWavFile();
  other.isLong = true;
  other.validBits = 12;
  seeds.push_back(other.Bytes());
  other.order = velmora::ByteOrder::Big;
  other.isLong = false;
  seeds.push_back(other.Bytes());
  return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(velmora::OpenWav, data, size);
}
