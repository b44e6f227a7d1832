#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// Motion Analysis ASCII analog (.anc, a text that starts "File_Type:"), generation 2: counts of a bipolar
/// converter as volts. Throws FileError.
std::unique_ptr<RecordingFile> OpenAnc(const std::string& path);

}  // namespace velmora
