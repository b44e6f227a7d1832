#include "formats/bioware/bioware2_reader.hpp"
#include "formats/bioware/bioware_archive_reader.hpp"
#include "recording_fuzz.hpp"
#include "support/instrument_files/plate_files.hpp"

std::vector<std::string> FuzzSeeds() {
  using namespace velmora::test;
  return {BioWare2FileBytes{}.Bytes(),
          BioWare2FileBytes{.plates = 0, .auxiliaries = 3, .padded = false}.Bytes(),
          BioWareArchiveBytes(1, 6, 6), BioWareArchiveBytes(2, 6, 6)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return velmora::fuzz::ReadAsRecording(
      size > 0 && data[0] == 2 ? velmora::OpenBioWareArchive : velmora::OpenBioWare2, data, size);
}
