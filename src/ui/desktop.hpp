#pragma once

#include <string>

namespace velmora::ui {

/// What the desktop is asked to start. Each returns false when there is no such program.

bool StartCalculator();
/// Shows a directory in the file manager.
bool ShowDirectory(const std::string& path);
/// Opens a text file in `program` when that is the path of one here, else in the desktop's own.
bool OpenText(const std::string& path, const std::string& program);

}  // namespace velmora::ui
