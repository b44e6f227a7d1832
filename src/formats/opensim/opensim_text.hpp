#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// An OpenSim storage or motion file (.sto, .mot), or one of the older form with "datacolumns". The times of
/// the file are kept. Throws FileError.
std::unique_ptr<RecordingFile> OpenOpenSim(const std::string& path);

}  // namespace velmora
