#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// Delsys EMGworks binary (.emg), versions 3 and 4; the older two are refused with the way round. Throws
/// FileError.
std::unique_ptr<RecordingFile> OpenDelsysEmg(const std::string& path);

}  // namespace velmora
