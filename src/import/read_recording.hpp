#pragma once

#include <string_view>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// The way of an instrument's file into the trial: opens it, asks which channels and which rate where that is
/// open, reads, and tells what was not as promised. Leaves NData 0 on failure. `name` of the format, for
/// people.
void ReadRecording(Workbench& workbench, ProgressPanel& panel, std::string_view name, OpenRecording open);

/// The same of a file that is open.
void ReadRecording(Workbench& workbench, ProgressPanel& panel, std::string_view name, RecordingFile& file);

}  // namespace velmora
