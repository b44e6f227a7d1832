#pragma once

#include <string>
#include <vector>

#include "core/files/settings.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// A directory as the browser takes it: the current one when empty, a colon behind a drive letter
/// alone, and no doubled separator at its end.
std::string CleanDirectory(std::string directory);

/// Sets directories, file name, user level and preferences from the store, and the directory of the
/// program family from the environment when the store has none.
void ReadStartSettings(Workbench& workbench, const SettingsStore& store);

/// Stores what the next session is to start with. A store that refuses is told in a box.
void WriteExitSettings(Workbench& workbench, SettingsStore& store);

/// Stores directory and file name at once, after a load from the browser or for another program that
/// is to read the file; the same box.
void SaveLastFile(Workbench& workbench, SettingsStore& store, std::string_view application = "Velmora2");

/// The first item of a command line names a data file and so its directory too.
void TakeCommandLine(Workbench& workbench, const std::vector<std::string>& items);

enum class StartAction { LoadFile, ShowAbout, Nothing };

/// What a session starts with, by trial.FileName: a file that is there is loaded; the about panel comes
/// first when there is none or it is "?"; nothing happens for ";" and for a file that is missing.
StartAction FirstAction(const Workbench& workbench);

/// "Velmora2", its version and what it is for, in lines.
std::string AboutText();

/// Where the manual is, whether or not it exists; empty when the family has no directory.
std::string ManualPath(const Workbench& workbench);

}  // namespace velmora
