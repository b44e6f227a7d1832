#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// C3D of any processor, integers or floats: the analog channels; where there are none, the coordinates of
/// the points. Throws FileError.
std::unique_ptr<RecordingFile> OpenC3d(const std::string& path);

}  // namespace velmora
