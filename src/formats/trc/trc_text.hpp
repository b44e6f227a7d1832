#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// Motion Analysis marker trajectories (.trc): X, Y and Z of each marker are channels at the data rate,
/// missing values 0. Throws FileError.
std::unique_ptr<RecordingFile> OpenTrc(const std::string& path);

}  // namespace velmora
