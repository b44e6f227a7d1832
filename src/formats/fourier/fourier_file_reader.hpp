#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Reads a Fourier transform file (.FTF) and builds the signal of its harmonics as the one channel of a
/// trial. Number of samples and duration are those of the trial that is open; without one they are asked,
/// and so are the number of harmonics and the bias. A question left without an answer leaves no trial.
void ReadFourierFile(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
