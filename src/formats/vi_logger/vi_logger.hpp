#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A text of the NI VI Logger: a header with "Scan rate: <seconds>", then lines of a clock time and values.
/// The clock becomes no channel; it gives the rate where the header does not. Throws FileError.
std::unique_ptr<RecordingFile> OpenViLogger(const std::string& path);

}  // namespace velmora
