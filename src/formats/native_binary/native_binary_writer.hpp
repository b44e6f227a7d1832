#pragma once

#include <string>

#include "core/questions/progress.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and a range of samples and saves the trial as a native binary file (.VMB).
/// Throws FileError, with workbench.OutputFileName set, when the file cannot be written; the file
/// on disk is then as it was.
void WriteNativeBinary(Workbench& workbench, ProgressPanel& panel);

/// Writes these samples (from 1) into a file of this name without a question. The trial counts as saved as it
/// did before. Throws FileError as above, std::out_of_range when the trial has no such samples.
void WriteNativeRange(Workbench& workbench, ProgressPanel& panel, const std::string& path, SampleRange range);

}  // namespace velmora
