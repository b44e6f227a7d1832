#pragma once

#include <memory>
#include <string>

#include "formats/recording/recording.hpp"

namespace velmora {

/// Vicon's text exports: the section "Devices" of a Nexus file, "ANALOG" or "FORCE PLATES" of a Workstation
/// file, or a file with date and time in its second and third lines. Frame and sample numbers become no
/// channels. Throws FileError.
std::unique_ptr<RecordingFile> OpenViconText(const std::string& path);

}  // namespace velmora
