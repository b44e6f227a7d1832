#pragma once

#include <string>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Asks for a name and saves the samples between the cursors as a native ASCII file (.VMA): labels cut
/// to 10 characters, values with four decimals, no units. The format holds 16 channels: a trial of
/// more is cut to 16, after a warning, once they are saved.
/// Throws FileError, with workbench.OutputFileName set, when the file cannot be written; the file on
/// disk and the trial are then as they were.
void WriteNativeAscii(Workbench& workbench, ProgressPanel& panel);

/// The same of the whole trial with all its channels, for ensemble averages (.VME); `defaultName` is offered.
/// Returns false when no name was given.
bool WriteEnsembleAscii(Workbench& workbench, ProgressPanel& panel, const std::string& defaultName);

}  // namespace velmora
