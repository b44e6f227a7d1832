#pragma once

#include "formats/recording/recording.hpp"

namespace velmora {

/// AMTI NetForce (.bsf), versions 100 and 105: forces in N and moments in N.m. Throws FileError.
std::unique_ptr<RecordingFile> OpenBsf(const std::string& path);

}  // namespace velmora
