#pragma once

#include <string>
#include <vector>

#include "formats/c3d/c3d_header.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// The force plates of the group FORCE_PLATFORM. Types 2, 3 and 4 can be reduced when their channels are
/// there; the others are listed. Distances of the file are in the unit of its points.
std::vector<RecordedPlate> C3dPlates(const C3dHead& head);

}  // namespace velmora
