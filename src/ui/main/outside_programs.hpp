#pragma once

#include <string>

#include "browse/programs.hpp"
#include "core/questions/questions.hpp"
#include "core/workbench.hpp"

class QMenu;

namespace velmora::ui {

/// The programs and documents outside this program that the window starts.
class OutsidePrograms {
 public:
  OutsidePrograms(Workbench& workbench, Questions& person) : workbench_(workbench), person_(person) {}

  void OpenText(const std::string& path);
  void AskAndOpenText(const std::string& path);
  void OpenManual(const std::string& path);
  void StartFamilyProgram(const std::string& path);

  /// Menus that are filled whenever they are opened.
  void FillWithPrograms(QMenu* menu, ProgramKind kind);
  void FillWithFamilyPrograms(QMenu* menu);
  void FillWithManuals(QMenu* menu);

 private:
  void Choose(ProgramKind kind);

  Workbench& workbench_;
  Questions& person_;
};

}  // namespace velmora::ui
