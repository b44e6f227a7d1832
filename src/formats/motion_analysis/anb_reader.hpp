#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// Motion Analysis binary analog (.anb): counts of a bipolar converter as volts. Throws FileError.
std::unique_ptr<RecordingFile> OpenAnb(const std::string& path);

}  // namespace velmora
