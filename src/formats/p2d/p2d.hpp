#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A Visual3D P2D text: a line of three whole numbers (rows, columns, 0), then rows over one cycle. Its
/// channels have the rate that makes row 0 a percentage from 0 to 100. Throws FileError.
std::unique_ptr<RecordingFile> OpenP2d(const std::string& path);

}  // namespace velmora
