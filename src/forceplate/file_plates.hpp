#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"
#include "forceplate/plate_types.hpp"

namespace velmora {

inline constexpr std::int16_t kReducedFile = 5;
inline constexpr std::int16_t kBioWareFile = 6;
inline constexpr std::int16_t kReducedHere = 8;  // from the definition view
inline constexpr std::int16_t kApasFile = 9;

/// Where the plates of a trial are described, by its FileTypeCode.
enum class PlateSource {
  Definition,  // native and text files: nowhere but in the program
  BioWare,     // the file's header
  Apas,        // the file's header
  AlreadyReduced,
  NotReducible,
  Other,  // nothing is known of them
};

constexpr PlateSource SourceOfPlates(std::int16_t fileTypeCode) {
  switch (fileTypeCode) {
    case 0:
    case 1:
    case 15:
    case 16:
    case 253:
    case 255:
      return PlateSource::Definition;
    case kBioWareFile:
      return PlateSource::BioWare;
    case kApasFile:
      return PlateSource::Apas;
    case kReducedFile:
      return PlateSource::AlreadyReduced;
    case 4:
    case kReducedHere:
    case 12:
    case 13:
    case 14:
      return PlateSource::NotReducible;
    default:
      return PlateSource::Other;
  }
}

/// The same of a trial. A file of another kind that describes its plates has put them where a definition
/// stands.
inline PlateSource SourceOfPlates(const Trial& trial) {
  const PlateSource source = SourceOfPlates(trial.FileTypeCode);
  return source == PlateSource::Other && !trial.FilePlates.empty() ? PlateSource::Definition : source;
}

/// The family of a plate of the trial. BioWare files have eight channels a plate, whatever type was chosen.
inline PlateFamily FamilyIn(const Trial& trial, const ForcePlate& plate) {
  return trial.FileTypeCode == kBioWareFile ? PlateFamily::Kistler : FamilyOf(plate);
}

}  // namespace velmora
