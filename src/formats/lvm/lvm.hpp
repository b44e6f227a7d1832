#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A LabVIEW measurement file (.lvm): its first segment, with no, one or many columns of times. Throws
/// FileError.
std::unique_ptr<RecordingFile> OpenLvm(const std::string& path);

}  // namespace velmora
