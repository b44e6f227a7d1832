#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// What the program remembers of its user from one session to the next, beside the directory, the
/// file and the user level.
struct Preferences {
  std::string ProgDir;  // of the program family
  std::string Viewer = "Notepad.exe";
  std::string Spreadsheet = "Excel.exe";
  bool FullScreen = false;
  bool Multiaxis = false;
  std::int32_t GraphWindowState = 0;
  std::int32_t FileType = 0;  // row of DataFileFilters
  std::int32_t TextType = 0;  // row of TextFileFilters
  std::int32_t TriggerType = -1;
  double TriggerHigh = 1.0;
  double TriggerLow = -1.0;
  std::int32_t TriggerChannel = 0;
};

}  // namespace velmora
