#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// The table of an F-Scan text: lines "KEY value", then columns of numbers, the first of them times. A movie
/// of the sensor's cells is refused. Throws FileError.
std::unique_ptr<RecordingFile> OpenFScanText(const std::string& path);

/// The same with frame numbers in column 1 and times in column 2.
std::unique_ptr<RecordingFile> OpenFScanGraph(const std::string& path);

}  // namespace velmora
