#include "graph/view_keys.hpp"

#include "core/text/text.hpp"
#include "graph/time_view.hpp"
#include "graph/view_saves.hpp"

namespace velmora {

namespace {

// The command of statistics between the cursors that a key runs.
const char* StatisticsOf(const std::string& key) {
  return key == "D"   ? "statistics.between-descriptive"
         : key == "M" ? "statistics.between-median"
         : key == "E" ? "statistics.between-emg"
         : key == "I" ? "statistics.between-integration"
                      : nullptr;
}

}  // namespace

void ShowKeys(Workbench& workbench, const char* list) {
  workbench.questions.AskBox({.title = "Keyboard Functions", .text = list, .icon = Icon::Information});
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

bool GraphView::PressGraphKey(const std::string& name) {
  return PressWindowKey(name) || PressLookKey(name);
}

bool TimeView::PressCommonKey(const KeyPress& key, const std::string& name) {
  return PressPlaceKey(key, name) || PressGraphKey(name) || PressStatisticsKey(name);
}

bool TimeView::PressPlaceKey(const KeyPress& key, const std::string& name) {
  if (name == "PAGEUP") {
    PanForward(key.ctrl);
  } else if (name == "PAGEDOWN") {
    PanBack(key.ctrl);
  } else if (name == "HOME") {
    LeftCursorToStart();
  } else if (name == "END") {
    RightCursorToEnd();
  } else if (name == "SCROLLLOCK") {
    CursorsToEnds();
  } else if (name == "0") {
    NoCursors();
  } else if (name == "1") {
    OneCursor();
  } else if (name == "2") {
    TwoCursors();
  } else {
    return false;
  }
  return true;
}

bool GraphView::PressWindowKey(const std::string& name) {
  if (name == "Z" || name == "F" || name == "W") {
    if (name == "Z" || windowMode_ == (name == "F")) {  // else there is nothing to leave or to enter
      ToggleWindow();
    }
    return true;
  }
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

bool GraphView::PressLookKey(const std::string& name) {
  const Plot* first = Lead().FirstVisible();
  if (name == "L") {
    const bool shown = first != nullptr && first->Line != LineStyle::None;
    for (Graph& graph : graphs_) {
      graph.SetLine(shown ? LineStyle::None : LineStyle::Solid);
    }
  } else if (name == "P") {
    const bool shown = first != nullptr && first->Point != PointStyle::None;
    for (Graph& graph : graphs_) {
      graph.SetPoint(shown ? PointStyle::None : PointStyle::Dot);
    }
  } else {
    return false;
  }
  return true;
}

bool TimeView::PressStatisticsKey(const std::string& name) {
  if (const char* statistics = StatisticsOf(name)) {
    workbench_.RunById(workbench_, statistics);
  } else if (name == "F5") {
    SaveRange(workbench_, *this);
  } else {
    return false;
  }
  return true;
}

}  // namespace velmora
