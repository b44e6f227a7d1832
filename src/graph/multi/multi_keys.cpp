#include <algorithm>
#include <array>

#include "core/text/text.hpp"
#include "graph/multi/multi_events.hpp"
#include "graph/multi/multi_view.hpp"
#include "graph/view_keys.hpp"

namespace velmora {
namespace {

constexpr const char* kMultiKeyList =
    "<-- = move left cursor backward\n--> = moved left cursor forward\ndown = move right cursor backward\n"
    "up = move right cursor forward\nPage Down = Backward pan\nCtrl-Page Down = Pan to start\n"
    "Page Up = Forward pan\nCtrl-Page Up = Pan to end\nR = Reset cursors\n0 = no cursors\n1 = one cursor\n"
    "2 = two cursors\nO = find EMG Onsets\nHome = set left cursor to start\nEnd = set right cursor to end\n"
    "Scroll Lock = set cursors to start and end\nC = start Calculator\nD = Descriptive stats\n"
    "E = EMG stats\nF = Full timebase\nI = Integral stats\nL = toggle Line mode\nM = Median stats\n"
    "P = toggle Points\nT = Change a threshold\nX = Interpolate between cursors\n"
    "W = Window between cursor(s)\nZ = Zoom in/out of window\nF1 or ? = show this help screen\nF2 = Reset\n"
    "F3 = full-screen\nF4 = windowed\nF5 = save data\nF6 = full width\nF7 = full height\nEvent tracking:\n"
    "    F9 = start Event tracking\n    F10 = save Event records\n"
    "    Double-click mouse = record channel Event\n    Insert = add an Event record\n"
    "    Delete = delete an Event record\n    Ctrl-Home = forward 1 Event record\n"
    "    Ctrl-End = backward 1 Event record";

constexpr std::array kMultiKeys = {
    "LEFT", "RIGHT", "UP", "DOWN", "PAGEUP", "PAGEDOWN", "HOME", "END", "SCROLLLOCK", "DELETE", "INSERT",
    "0",    "1",     "2",  "C",    "D",      "E",        "F",    "I",   "L",          "M",      "O",
    "P",    "R",     "T",  "W",    "X",      "Z",        "F1",   "?",   "/",          "SLASH",  "QUESTION",
    "F2",   "F3",    "F4", "F5",   "F6",     "F7",       "F9",   "F10"};

bool IsKey(std::string_view name) {
  return std::find(kMultiKeys.begin(), kMultiKeys.end(), name) != kMultiKeys.end();
}

}  // namespace

void MultiView::ShowKeyList() {
  ShowKeys(workbench_, kMultiKeyList);
}

bool MultiView::DoKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  if (!IsKey(name)) {
    return false;
  }
  if (selected_ == 0) {
    ShowRefusal(workbench_, {.title = "Click on a Graph",
                             .text = "Click on a graph before using keyboard functions.",
                             .icon = Icon::Exclamation});
    return true;
  }
  return PressEventKey(key, name) || PressOwnKey(key, name) || PressCommonKey(key, name);
}

// A command may close the view: nothing of it is asked afterwards.
bool MultiView::PressOwnKey(const KeyPress& key, const std::string& name) {
  if (name == "LEFT" || name == "RIGHT" || name == "UP" || name == "DOWN") {
    if (const std::optional<CursorMove> move = ArrowMove(key)) {
      MoveCommon(move->cursor, move->x);
    }
  } else if (name == "R") {
    ResetCursors();
  } else if (name == "F2") {
    Reset();
  } else if (name == "X") {
    Interpolate();
  } else if (AsksForHelp(name)) {
    ShowKeyList();
  } else {
    return false;
  }
  return true;
}

void MultiView::Interpolate() {
  Workbench& workbench = workbench_;
  const bool before = workbench.trial.FileChanged;
  workbench.trial.FileChanged = false;
  Run("smooth.interpolate");
  if (!workbench.trial.FileChanged) {
    workbench.trial.FileChanged = before;
    return;
  }
  const Button answer =
      workbench.questions.AskBox({.title = "Replot Necessary",
                                  .text = "Press Yes to exit and replot data to view the changes.",
                                  .icon = Icon::Question,
                                  .buttons = {Button::Yes, Button::No}});
  if (answer == Button::Yes) {
    workbench.RunById(workbench, "view.exit");
  }
}

void MultiView::DoClick(const GraphClick& click) {
  Select(click.graph);
  if (click.how == Clicked::Right) {
    RecordAll(workbench_, *this);
  } else if (click.how == Clicked::Twice) {
    RecordGraph(workbench_, *this, click.graph);
  }
}

}  // namespace velmora
