#pragma once

#include "core/workbench.hpp"
#include "graph/single_view.hpp"

namespace velmora {

/// Chooses the samples of the next native save from the cursors, then runs that save. With more than
/// two cursors it asks for a pair.
void SaveRange(Workbench& workbench, TimeView& view);

/// Writes the cursors to a .VMC file, after a confirmation and a question for its name.
void SaveCursors(Workbench& workbench, SingleView& view);

/// The text of a .VMC file: the trial, then number, sample, time and distance of every cursor.
std::string CursorFileText(const Workbench& workbench, const SingleView& view);

/// A file a graph in the directory the program was started in holds its looks.
void SaveStyle(Workbench& workbench, GraphView& view);
void RecallStyle(Workbench& workbench, GraphView& view);

}  // namespace velmora
