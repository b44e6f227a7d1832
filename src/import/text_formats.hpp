#pragma once

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

// Texts of instruments whose headers tell where the numbers are. What a header does not tell the parser is
// asked for, or the file is offered to the parser.

/// A text of channels by the row of trial.FileTypeCode. Where its header is not understood, Yes tries the
/// parser.
void ReadTextRecording(Workbench& workbench, ProgressPanel& panel, OpenRecording open);

template <OpenRecording open>
void ReadTable(Workbench& workbench, ProgressPanel& panel) {
  ReadTextRecording(workbench, panel, open);
}

/// F-Scan: .ASG has its times in column 2, others in column 1.
void ReadFScan(Workbench& workbench, ProgressPanel& panel);

/// Visual3D P2D: row 0 becomes a percentage.
void ReadP2d(Workbench& workbench, ProgressPanel& panel);

/// Delsys texts: with a time column for each channel as a recording, else through the parser.
void ReadDelsysText(Workbench& workbench, ProgressPanel& panel);

/// PDT: through the parser where its first line tells a rate.
void ReadPdt(Workbench& workbench, ProgressPanel& panel);

}  // namespace velmora
