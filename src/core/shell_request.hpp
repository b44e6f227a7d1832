#pragma once

namespace velmora {

/// What a command asks of the program's main window. Without a window nobody hears it.
enum class ShellRequest {
  ShowFiles,  // the directory, its files or the selected file are others now
  ExploreDirectory,
  HideGraph,  // the graph was left, and something else comes before the command that left it is over
  Exit
};

}  // namespace velmora
