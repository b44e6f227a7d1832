#pragma once

#include <QStatusBar>

#include "graph/graph.hpp"

class QLabel;

namespace velmora::ui {

/// What the mouse does in the mode.
QString HintOf(TrackMode mode);

/// Below a graph: what the mouse does, and where it is.
class GraphStatusBar : public QStatusBar {
  Q_OBJECT

 public:
  explicit GraphStatusBar(QWidget* parent = nullptr);

  void ShowMode(TrackMode mode);
  void ShowPlace(const QString& x, const QString& y);
  /// In place of where the mouse is.
  void ShowText(const QString& text);

 private:
  QLabel* mode_;
  QLabel* place_;
};

}  // namespace velmora::ui
