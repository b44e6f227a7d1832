#pragma once

namespace velmora {

/// What a command asks of the program's main window. Without a window nobody hears it.
enum class ShellRequest {
  ShowFiles,  // the directory, its files or the selected file are others now
  ExploreDirectory,
  Exit
};

}  // namespace velmora
