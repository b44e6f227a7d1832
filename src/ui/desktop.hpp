#pragma once

#include <string>

#include "browse/programs.hpp"

namespace velmora::ui {

/// What the desktop is asked to start. Each returns false when there is no such program.

bool StartCalculator();
/// Shows a directory in the file manager.
bool ShowDirectory(const std::string& path);
/// Opens a document in the desktop's own program for it.
bool OpenDocument(const std::string& path);
bool StartProgram(const std::string& path);

/// Opens a file of the text list: in the first of the programs that is there, else in the desktop's own
/// for texts or for workbooks. Returns why that was not possible, in a sentence; empty when it was.
std::string OpenWith(const Opening& opening, const std::string& path);

}  // namespace velmora::ui
