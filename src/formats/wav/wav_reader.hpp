#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// Audio wave: integers of 8 to 64 bits as parts of full scale, floats as they are, mu-law and A-law. Throws
/// FileError.
std::unique_ptr<RecordingFile> OpenWav(const std::string& path);

}  // namespace velmora
