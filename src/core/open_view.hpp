#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace velmora {

class ActionListener;

/// A key as a person presses it: its name ("PageUp", "F10", "N", "2") and what is held with it.
struct KeyPress {
  std::string name;
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
};

/// A cursor (from 1) that was dragged to x, in the list of one graph (from 1). 0: of the graph that the view
/// takes by itself; a cursor that all graphs have in common moves on all of them.
struct CursorMove {
  int cursor = 1;
  double x = 0.0;
  int graph = 0;
};

/// The line of a threshold that was dragged to y, in one graph (from 1).
struct ThresholdMove {
  int graph = 1;
  double y = 0.0;
};

enum class Clicked { Once, Twice, Right };

/// A click in a graph (from 1).
struct GraphClick {
  int graph = 1;
  Clicked how = Clicked::Once;
};

/// What a view asks of the window it is drawn in. Without a window nobody hears it.
enum class WindowRequest { Beep, Maximise, Normal, FullWidth, FullHeight, Calculator };

/// The graph that is open: its logic without a drawing. The window passes on what a person does and
/// draws what the view then holds; a recipe does the same without a window. Graphs count from 1.
class OpenView {
 public:
  OpenView() = default;
  OpenView(const OpenView&) = delete;
  OpenView& operator=(const OpenView&) = delete;
  virtual ~OpenView() = default;

  // What a person does; the workbench's listener hears of it.

  /// Returns false when the view has no such key.
  bool PressKey(const KeyPress& key);
  /// A cursor (from 1) was dragged to x, in the list of `graph`. Throws std::out_of_range when there is no
  /// such cursor or graph, std::invalid_argument when x is not finite.
  void MoveCursor(int cursor, double x, int graph = 0);
  /// The threshold line of a graph was dragged to y; the threshold itself stays until it is taken over.
  /// Throws as MoveCursor.
  void MoveThreshold(int graph, double y);
  /// Throws std::out_of_range when there is no such graph.
  void Click(int graph, Clicked how = Clicked::Once);

  /// A command outside the view may have changed the trial. Returns false when the view has nothing
  /// left to show and is to be closed.
  virtual bool TrialChanged() = 0;
  /// Another trial takes the place of the one that is shown; TrialChanged follows.
  virtual void TrialReplaced() {}
  /// Thresholds were made, entered or read.
  virtual void ThresholdsChanged() {}
  /// The table of events is another.
  virtual void EventsChanged() {}
  /// A person wants to leave. Returns false to stay.
  virtual bool MayLeave() { return true; }
  /// The last call: keeps what outlives the view.
  virtual void Leave() = 0;

  std::function<void(WindowRequest)> onRequest;

 protected:
  void Request(WindowRequest request) const {
    if (onRequest) {
      onRequest(request);
    }
  }

 private:
  [[nodiscard]] virtual ActionListener* Listener() const = 0;
  virtual bool DoKey(const KeyPress& key) = 0;
  virtual void DoMove(const CursorMove& move) = 0;
  virtual void DoMoveThreshold(const ThresholdMove& move);
  virtual void DoClick(const GraphClick& click) = 0;
};

}  // namespace velmora
