#pragma once

#include <span>
#include <string>

#include "core/command.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Directories and the selected file, and leaving the program.
std::span<const Command> FileCommands();

/// Makes `directory` the current one: of the process, of the file lists and of saves. Returns false,
/// with the reason told, when it cannot be entered.
bool OpenDirectory(Workbench& workbench, const std::string& directory);

/// Selects a file without loading it.
void SelectFile(Workbench& workbench, const std::string& path);

/// The box of a click with the right button on a file. Returns whether it is to be opened.
bool AskReadFile(Workbench& workbench, const std::string& path);

/// Whether the data may be discarded: asks when they are not saved. `text` says what saves them.
bool ConfirmDiscard(Workbench& workbench, const std::string& text);

}  // namespace velmora
