#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A LabVIEW TDMS file (National Instruments, "TDMS File Format Internal Structure"): of the group with the
/// most numeric channels of equal length these channels, scaled as the file says (linear and polynomial
/// scales). Throws FileError.
std::unique_ptr<RecordingFile> OpenTdms(const std::string& path);

}  // namespace velmora
