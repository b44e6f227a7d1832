#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// An HDF5 file, through libhdf5, read-only, without plugins and without following soft or external links. Of
/// an OpenSignals file the raw channels of the first device, in counts; of others the numeric datasets of the
/// group that has the most of one length. Throws FileError.
std::unique_ptr<RecordingFile> OpenHdf5(const std::string& path);

}  // namespace velmora
