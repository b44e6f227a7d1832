#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// EDF, EDF+, BDF and BDF+: signals of any rates, annotations as events. Throws FileError.
std::unique_ptr<RecordingFile> OpenEdf(const std::string& path);

}  // namespace velmora
