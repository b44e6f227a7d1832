#pragma once

#include <QStatusBar>

#include "core/workbench.hpp"
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
  /// Where the mouse is.
  void ShowPlace(const QString& x, const QString& y);
  /// The same where the abscissa is the trial's.
  void ShowTimePlace(const Workbench& workbench, double x, double y);
  /// In place of where the mouse is.
  void ShowText(const QString& text);

 private:
  QLabel* mode_;
  QLabel* place_;
};

}  // namespace velmora::ui
