#pragma once

#include <QString>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/open_view.hpp"
#include "graph/graph_view.hpp"

class QHBoxLayout;
class QLayout;
class QMainWindow;
class QPushButton;

namespace velmora::ui {

class TwoPartBar;

/// The slim bar above a graph: buttons that run commands, the modes of the mouse, and keys of the buttons
/// that the view itself has no use for.
class GraphBar {
 public:
  using RunById = std::function<void(const char* id)>;

  /// Goes to the top of `window`, whose menus are there.
  GraphBar(QMainWindow& window, RunById run);

  struct Button {
    const char* name;
    const char* caption;
    const char* id;  // nullptr: not there yet
    QString hint;
    const char* key = nullptr;     // the view's own that does the same
    const char* ownKey = nullptr;  // that does nothing in the view
  };
  [[nodiscard]] QHBoxLayout& First() const;
  [[nodiscard]] QHBoxLayout& Second() const;
  QPushButton* Add(QLayout& bar, const Button& button);
  /// What lies between the cursors, or all of it again.
  void AddWindow(QLayout& bar);
  /// A caption, with its letter as a key unless a menu has that.
  void Caption(QPushButton& button, const QString& caption) const;
  /// What the mouse does; dragging cursors only where there are cursors.
  void AddModes(QLayout& bar, bool cursors);
  /// The caption of the window's button, and what the mouse does.
  void Show(const GraphView& view) const;
  /// Returns whether the key is one of a button.
  bool PressKey(const KeyPress& key) const;

 private:
  QMainWindow& window_;
  RunById run_;
  TwoPartBar* strip_;  // a child of the window, as all buttons
  QPushButton* windowButton_ = nullptr;
  std::map<std::string, QPushButton*> keys_;
  std::vector<std::pair<TrackMode, QPushButton*>> modes_;
};

}  // namespace velmora::ui
