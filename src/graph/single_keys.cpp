#include "core/text/text.hpp"
#include "graph/single_view.hpp"
#include "graph/view_keys.hpp"
#include "graph/view_saves.hpp"

namespace velmora {
namespace {

constexpr const char* kSingleKeyList =
    "Page Down = Backward pan\nCtrl-Page Down = View start\nPage Up = Forward pan\n"
    "Ctrl-Page Up = View end\n0 = remove cursor(s)\n1 = show 1 cursor\n2 = show 2 cursors\n"
    "3 = triggering\nDelete = remove a cursor\nHome = set left cursor to start\n"
    "End = set right cursor to end\nScroll Lock = set cursors to start and end\nC = start Calculator\n"
    "D = Descriptive stats\nE = EMG stats\nF = Full timebase\nI = Integral stats\nL = toggle Line mode\n"
    "M = Median stats\nN = show cursor Numbers\nP = toggle Points\nW = Window between cursor(s)\n"
    "Z = Zoom in/out of window\nF1 or ? = show this help screen\nF2 or R = reset\nF3  = full-screen\n"
    "F4  = window\nF5  = save data\nF6  = full width\nF7  = full height\nF10 = save cursor positions";

}  // namespace

void SingleView::ShowKeyList() {
  ShowKeys(workbench_, kSingleKeyList);
}

bool SingleView::DoKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  if (AsksForHelp(name)) {
    ShowKeyList();
  } else if (name == "F2" || name == "R") {
    Reset();
  } else if (name == "F10") {
    SaveCursors(workbench_, *this);
  } else if (name == "3") {
    TriggeringOffered = true;
    workbench_.RunById(workbench_, "trigger.open");
  } else if (name == "DELETE") {
    DeleteCursor();
  } else if (name == "5") {
    ToggleValues();
  } else if (name == "N") {
    ToggleNumbers();
  } else {
    return PressCommonKey(key, name);
  }
  return true;
}

}  // namespace velmora
