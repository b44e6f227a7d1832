#include "core/open_view.hpp"

#include <stdexcept>

#include "core/action_listener.hpp"

namespace velmora {

bool OpenView::PressKey(const KeyPress& key) {
  const ActionScope action(Listener(), key);
  const bool has = DoKey(key);
  if (!has) {
    action.WasNone();
  }
  return has;
}

void OpenView::MoveCursor(int cursor, double x, int graph) {
  const CursorMove move{cursor, x, graph};
  const ActionScope action(Listener(), move);
  DoMove(move);
}

void OpenView::MoveThreshold(int graph, double y) {
  const ThresholdMove move{graph, y};
  const ActionScope action(Listener(), move);
  DoMoveThreshold(move);
}

void OpenView::DoMoveThreshold(const ThresholdMove& move) {
  throw std::out_of_range("there is no threshold line in graph " + std::to_string(move.graph));
}

void OpenView::Click(int graph, Clicked how) {
  const GraphClick click{graph, how};
  const ActionScope action(Listener(), click);
  DoClick(click);
}

}  // namespace velmora
