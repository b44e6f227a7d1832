#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A Delsys text export in which each channel has a time column of its own, at rates of its own. The times of
/// the fastest channel are those of the trial. Throws FileError.
std::unique_ptr<RecordingFile> OpenDelsysText(const std::string& path);

/// Whether a text has more than one time column in Delsys's way. Throws FileError.
bool HasTimeColumns(const std::string& path);

}  // namespace velmora
