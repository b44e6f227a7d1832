#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A MATLAB file of version 4, 5, 7 or 7.3, through libmatio: its real numeric matrices whose longer side is
/// the longest become channels; a rising vector "t" or "time", or a scalar like "fs", tells the rate; one
/// level of structs is opened. Throws FileError.
std::unique_ptr<RecordingFile> OpenMat(const std::string& path);

}  // namespace velmora
