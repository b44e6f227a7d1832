#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// BioWare later than 2 (.dat): plates of eight channels, in newtons as their sensors measure. The layout is
/// known from files alone: one whose numbers do not agree with each other and with its size is refused.
/// Throws FileError.
std::unique_ptr<RecordingFile> OpenBioWareArchive(const std::string& path);

}  // namespace velmora
