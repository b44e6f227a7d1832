#include <cmath>

#include "core/text/text.hpp"
#include "forceplate/plate_database.hpp"
#include "fuzz_target.hpp"

using namespace velmora;

std::vector<std::string> FuzzSeeds() {
  PlateDatabase database;
  database.Put({.PlateName = "left", .a = 120, .b = 200, .az0 = -54, .XYRange = 5000, .XSens = -7.86});
  database.Put({.PlateType = 5, .PlateName = "right \xC3\xBC"});
  const std::string bytes(database.Bytes());
  return {bytes, bytes + "rest", bytes.substr(0, 900), std::string(620, ' ')};
}

// Whatever is read can be listed, and a plate that is taken from it is one and comes back from a record.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::MemoryFile file(data, size);
  PlateDatabase database = ReadPlateDatabase(file.Path());
  const std::size_t records = database.Records();
  for (std::size_t k = 0; k < records; ++k) {
    if (CharacterCount(database.Name(k)) > PlateDatabase::kNameBytes) {
      std::abort();
    }
    if (const std::optional<ForcePlate> plate = database.Plate(k)) {
      PlateDatabase copy;
      copy.Put(*plate);
      if (copy.Plate(0) != plate || !std::isfinite(plate->a)) {
        std::abort();
      }
    }
  }
  database.Put({.PlateName = "new"});
  if (database.Records() < records) {
    std::abort();
  }
  return 0;
}
