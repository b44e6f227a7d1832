#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// BioWare 2 of DOS (.dat, .191, .d20): one or two Kistler plates, as volts, and auxiliary channels. Throws
/// FileError.
std::unique_ptr<RecordingFile> OpenBioWare2(const std::string& path);

}  // namespace velmora
