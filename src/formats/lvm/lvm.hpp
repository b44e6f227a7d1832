#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A LabVIEW measurement file (.lvm), with no, one or many columns of times: its first segment and those that
/// go on at the same rate where the one before ends; others are told. Throws FileError.
std::unique_ptr<RecordingFile> OpenLvm(const std::string& path);

}  // namespace velmora
