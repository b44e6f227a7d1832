#include "graph/view_keys.hpp"

#include "core/text/text.hpp"
#include "graph/single_view.hpp"
#include "graph/view_saves.hpp"

namespace velmora {
namespace {

constexpr const char* kKeyboardList =
    "Page Down = Backward pan\nCtrl-Page Down = View start\nPage Up = Forward pan\n"
    "Ctrl-Page Up = View end\n0 = remove cursor(s)\n1 = show 1 cursor\n2 = show 2 cursors\n"
    "3 = triggering\nDelete = remove a cursor\nHome = set left cursor to start\n"
    "End = set right cursor to end\nScroll Lock = set cursors to start and end\nC = start Calculator\n"
    "D = Descriptive stats\nE = EMG stats\nF = Full timebase\nI = Integral stats\nL = toggle Line mode\n"
    "M = Median stats\nN = show cursor Numbers\nP = toggle Points\nW = Window between cursor(s)\n"
    "Z = Zoom in/out of window\nF1 or ? = show this help screen\nF2 or R = reset\nF3  = full-screen\n"
    "F4  = window\nF5  = save data\nF6  = full width\nF7  = full height\nF10 = save cursor positions";

}  // namespace

void ShowKeys(Workbench& workbench, const char* list) {
  workbench.questions.AskBox({.title = "Keyboard Functions", .text = list, .icon = Icon::Information});
}

void ShowKeyboardHelp(Workbench& workbench) {
  ShowKeys(workbench, kKeyboardList);
}

bool SingleView::DoKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  return PressNavigationKey(key) || PressWindowKey(name) || PressFunctionKey(name) || PressCharacterKey(name);
}

bool SingleView::PressNavigationKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  if (name == "PAGEUP") {
    PanForward(key.ctrl);
  } else if (name == "PAGEDOWN") {
    PanBack(key.ctrl);
  } else if (name == "DELETE") {
    DeleteCursor();
  } else if (name == "HOME") {
    LeftCursorToStart();
  } else if (name == "END") {
    RightCursorToEnd();
  } else if (name == "SCROLLLOCK") {
    CursorsToEnds();
  } else {
    return false;
  }
  return true;
}

std::optional<WindowRequest> WindowRequestOf(std::string_view key) {
  if (key == "F3") {
    return WindowRequest::Maximise;
  }
  if (key == "F4") {
    return WindowRequest::Normal;
  }
  if (key == "F6") {
    return WindowRequest::FullWidth;
  }
  if (key == "F7") {
    return WindowRequest::FullHeight;
  }
  if (key == "C") {
    return WindowRequest::Calculator;
  }
  return std::nullopt;
}

bool AsksForHelp(std::string_view key) {
  return key == "F1" || key == "?" || key == "/" || key == "QUESTION" || key == "SLASH";
}

bool SingleView::PressWindowKey(const std::string& name) {
  const std::optional<WindowRequest> request = WindowRequestOf(name);
  if (!request) {
    return false;
  }
  if (*request != WindowRequest::Calculator) {
    maximised_ = *request == WindowRequest::Maximise;
  }
  Request(*request);
  return true;
}

bool SingleView::PressFunctionKey(const std::string& name) {
  if (AsksForHelp(name)) {
    ShowKeyboardHelp(workbench_);
  } else if (name == "F2") {
    Reset();
  } else if (name == "F5") {
    SaveRange(workbench_, *this);
  } else if (name == "F10") {
    SaveCursors(workbench_, *this);
  } else {
    return false;
  }
  return true;
}

bool SingleView::PressCharacterKey(const std::string& name) {
  if (name == "0") {
    NoCursors();
  } else if (name == "1") {
    OneCursor();
  } else if (name == "2") {
    TwoCursors();
  } else if (name == "5") {
    ToggleValues();
  } else if (name == "E" || name == "I") {
    workbench_.RunById(workbench_, name == "E" ? "window-stats.emg" : "window-stats.integral");
  } else if (name == "D" || name == "M") {
    RefuseStatistics();
  } else if (name == "Z" || (name == "F" && windowMode_) || (name == "W" && !windowMode_)) {
    ToggleWindow();
  } else if (name == "L") {
    const Plot* first = graph_.FirstVisible();
    const bool shown = first != nullptr && first->Line != LineStyle::None;
    graph_.SetLine(shown ? LineStyle::None : LineStyle::Solid);
  } else if (name == "P") {
    const Plot* first = graph_.FirstVisible();
    const bool shown = first != nullptr && first->Point != PointStyle::None;
    graph_.SetPoint(shown ? PointStyle::None : PointStyle::Dot);
  } else if (name == "N") {
    ToggleNumbers();
  } else if (name == "R") {
    Reset();
  } else {
    return name == "F" || name == "W";  // these do nothing when there is nothing to leave or to enter
  }
  return true;
}

void SingleView::SetStatRange() {
  GraphMemory& memory = workbench_.graph;
  memory.StatLo = 1;
  memory.StatHi = workbench_.trial.NData;
  if (Cursors() >= 2) {
    const SampleRange pair = PairRange();
    memory.StatLo = pair.lo;
    memory.StatHi = pair.hi;
  } else if (Cursors() == 1) {
    memory.StatLo = SampleOf(1);
  }
}

void SingleView::RefuseStatistics() {
  SetStatRange();
  ShowFailure(workbench_, {.title = "Statistics",
                           .text = "This version has no descriptive and median statistics yet.",
                           .icon = Icon::Exclamation});
}

}  // namespace velmora
